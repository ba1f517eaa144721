// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <cstring>
#include <gmock/gmock.h>
#include <stdexcept>

#include "private_chip.h"

namespace {

using testing::Each;
using testing::HasSubstr;
using testing::SizeIs;
using Words = std::vector<uint32_t>;

class MirrorGroups : public vchip_test::PrivateChip {};

constexpr chip_mirror_entry kFull = {1, 28, 0x10000001, 6, 5, 6, 1, 8, 9, 10, 11, 1, 13, 14, 1};

TEST_F(MirrorGroups, StartEmpty) {
  for (const uint32_t unit : {0u, 1u}) {
    EXPECT_THAT(vchip::mirror_groups(unit), SizeIs(4));
    EXPECT_THAT(vchip::mirror_groups(unit), Each(Words(15, 0)));
  }
}

TEST_F(MirrorGroups, KeepAllFifteenWords) {
  EXPECT_EQ(rtk_mirror_group_set(1, 3, &kFull), 0);
  EXPECT_EQ(vchip::mirror_groups(1)[3],
            (Words{1, 28, 0x10000001, 6, 5, 6, 1, 8, 9, 10, 11, 1, 13, 14, 1}));
  EXPECT_EQ(vchip::mirror_groups(1)[2], Words(15, 0));
  EXPECT_EQ(vchip::mirror_groups(0)[3], Words(15, 0));
  chip_mirror_entry read = {};
  EXPECT_EQ(rtk_mirror_group_get(1, 3, &read), 0);
  EXPECT_EQ(memcmp(&read, &kFull, sizeof read), 0);
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_EQ(vchip::mirror_groups(1)[3], Words(15, 0));
}

TEST_F(MirrorGroups, HaveRanges) {
  const std::string before = vchip::dump_json(-1);
  chip_mirror_entry entry = kFull;
  EXPECT_EQ(rtk_mirror_group_set(0, 4, &entry), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_mirror_group_get(0, 4, &entry), VCHIP_E_INDEX);
  entry.mirroring_port = 29;
  EXPECT_EQ(rtk_mirror_group_set(0, 0, &entry), VCHIP_E_PORT);
  entry = kFull;
  entry.ingress = 1u << 29;
  EXPECT_EQ(rtk_mirror_group_set(0, 0, &entry), VCHIP_E_PORT);
  entry = kFull;
  entry.egress = 1u << 31;
  EXPECT_EQ(rtk_mirror_group_set(0, 0, &entry), VCHIP_E_PORT);
  for (uint32_t chip_mirror_entry::*flag :
       {&chip_mirror_entry::enable, &chip_mirror_entry::field7, &chip_mirror_entry::field12,
        &chip_mirror_entry::field15}) {
    entry = kFull;
    entry.*flag = 2;
    EXPECT_EQ(rtk_mirror_group_set(0, 0, &entry), VCHIP_E_VALUE);
  }
  EXPECT_EQ(vchip::dump_json(-1), before);
  EXPECT_THROW(vchip::mirror_groups(2), std::out_of_range);
}

TEST_F(MirrorGroups, AreDumpedByName) {
  ASSERT_EQ(rtk_mirror_group_set(0, 0, &kFull), 0);
  EXPECT_THAT(vchip::dump_json(-1),
              HasSubstr(R"("mirror":[{"enable":true,"mirroring_port":28,"ingress":[0,28],)"
                        R"("egress":[1,2],"field7":true,"cpu_port":true,"flows":true,)"
                        R"("other_fields":[5,6,8,9,10,11,13,14]},{"enable":false,)"));
}

class Trunks : public vchip_test::PrivateChip {};

TEST_F(Trunks, StartEmptyAndUnlikeWhatProgramsSet) {
  const vchip::TrunkView expected = {Words(32, 0), Words(2, 1)};
  EXPECT_EQ(vchip::trunks(0), expected);
  EXPECT_EQ(vchip::trunks(1), expected);
}

TEST_F(Trunks, KeepMembersAndHashes) {
  const uint32_t members = 0x08000003;
  EXPECT_EQ(rtk_trunk_port_set(1, 31, &members), 0);
  EXPECT_EQ(rtk_trunk_distributionAlgorithmParam_set(1, 1, 0x18), 0);
  EXPECT_EQ(vchip::trunks(1).members[31], members);
  EXPECT_EQ(vchip::trunks(1).hash_fields, (Words{1, 0x18}));
  EXPECT_EQ(vchip::trunks(0).members[31], 0u);
  EXPECT_THAT(vchip::dump_json(-1),
              HasSubstr(R"("trunk":{"trunks":[{"trunk":31,"members":[0,1,27]}],)"
                        R"("algorithms":[{"hash":["source-port"]},)"
                        R"({"hash":["source-ip","destination-ip"]}]})"));
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_EQ(vchip::trunks(1).members[31], 0u);
}

TEST_F(Trunks, ShareNoPort) {
  const uint32_t first = 6;
  const uint32_t second = 0xC;
  ASSERT_EQ(rtk_trunk_port_set(0, 1, &first), 0);
  EXPECT_EQ(rtk_trunk_port_set(0, 2, &second), VCHIP_E_TRUNK_MEMBER);
  EXPECT_EQ(vchip::trunks(0).members[2], 0u);
  EXPECT_EQ(rtk_trunk_port_set(0, 1, &second), 0) << "its own members are not in its way";
  EXPECT_EQ(rtk_trunk_port_set(1, 2, &first), 0);
  EXPECT_STREQ(vchip_result_text(VCHIP_E_TRUNK_MEMBER), "a port belongs to another trunk");
}

TEST_F(Trunks, HaveRanges) {
  const std::string before = vchip::dump_json(-1);
  const uint32_t good = 1;
  const uint32_t beyond = 1u << 29;
  const uint32_t cpu = 1u << 28;
  EXPECT_EQ(rtk_trunk_port_set(0, 32, &good), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_trunk_port_set(0, 0, &beyond), VCHIP_E_PORT);
  EXPECT_EQ(rtk_trunk_port_set(0, 0, &cpu), VCHIP_E_CPU_PORT);
  EXPECT_EQ(rtk_trunk_distributionAlgorithmParam_set(0, 2, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_trunk_distributionAlgorithmParam_set(0, 0, 0x80), VCHIP_E_VALUE);
  EXPECT_EQ(vchip::dump_json(-1), before);
  EXPECT_THROW(vchip::trunks(2), std::out_of_range);
}

}  // namespace
