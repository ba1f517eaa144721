// SPDX-License-Identifier: MIT
#include <swctl/vlan_rules.h>

#include "support/library_test.h"
#include "vlan/bitmap.h"

namespace {

using swctl_test::chip_answers;

using Conversion = swctl_test::LibraryTest;

TEST_F(Conversion, EgressAddWritesEveryField) {
  EXPECT_EQ(user_vlan_translate_egress_add(9, 1, 3, 5, 0x7000A, 0x30014), 0);
  EXPECT_CALLS(
      "rtk_vlan_egrVlanCnvtEntry_set(unit=1, index=3, entry.valid=1, entry.ignore_vid=0, "
      "entry.vid=10, entry.ignore_second_key=1, entry.second_key=0, entry.field6=0, "
      "entry.field7=0, entry.ignore_port=0, entry.port=5, entry.field10=0, entry.field11=0, "
      "entry.new_vid=20, entry.field13=0, entry.field14=0) = 0");
  EXPECT_EQ(
      vchip::egress_entries(1),
      (std::vector<vchip::EgressView>{{3, false, 10, true, 0, false, 5, 20, {0, 0, 0, 0, 0, 0}}}));
  EXPECT_TRUE(vchip::egress_entries(0).empty());
}

TEST_F(Conversion, EgressAddPassesIndexAndPortOn) {
  chip_answers("rtk_vlan_egrVlanCnvtEntry_set", 0);
  EXPECT_EQ(user_vlan_translate_egress_add(0, 0, 0xFFFFFFFF, -3, 1, 2), 0);
  const swprobe::Call call = swprobe::take().at(0);
  EXPECT_EQ(static_cast<uint32_t>(call.in("index")), 0xFFFFFFFFu);
  EXPECT_EQ(static_cast<uint32_t>(call.in("entry.port")), 0xFFFFFFFDu);
}

TEST_F(Conversion, EgressDeleteIgnoresEveryKey) {
  ASSERT_EQ(user_vlan_translate_egress_add(0, 1, 3, 5, 10, 20), 0);
  swprobe::forget();
  EXPECT_EQ(user_vlan_translate_egress_delete(9, 1, 3), 0);
  EXPECT_CALLS(
      "rtk_vlan_egrVlanCnvtEntry_set(unit=1, index=3, entry.valid=0, entry.ignore_vid=1, "
      "entry.vid=0, entry.ignore_second_key=1, entry.second_key=0, entry.field6=0, "
      "entry.field7=0, entry.ignore_port=1, entry.port=0, entry.field10=0, entry.field11=0, "
      "entry.new_vid=0, entry.field13=0, entry.field14=0) = 0");
  EXPECT_TRUE(vchip::egress_entries(1).empty());
}

TEST_F(Conversion, EgressResultsArePassedOn) {
  EXPECT_EQ(user_vlan_translate_egress_add(0, 0, 512, 5, 10, 20), VCHIP_E_INDEX);
  EXPECT_EQ(user_vlan_translate_egress_delete(0, 0, 512), VCHIP_E_INDEX);
  for (const int32_t result : {5, -5, INT32_MIN}) {
    swprobe::clear_plan();
    chip_answers("rtk_vlan_egrVlanCnvtEntry_set", result);
    EXPECT_EQ(user_vlan_translate_egress_add(0, 0, 0, 5, 10, 20), result);
    EXPECT_EQ(user_vlan_translate_egress_delete(0, 0, 0), result);
  }
}

TEST_F(Conversion, BlockModesAreProgrammedInOrder) {
  EXPECT_EQ(user_vlan_ingress_convert_block_mode_init(1), 0);
  EXPECT_CALLS("rtk_vlan_igrVlanCnvtBlkMode_set(unit=1, block=0, mode=1) = 0",
               "rtk_vlan_igrVlanCnvtBlkMode_set(unit=1, block=1, mode=2) = 0",
               "rtk_vlan_igrVlanCnvtBlkMode_set(unit=1, block=2, mode=0) = 0");
  EXPECT_EQ(vchip::ingress_block_modes(1), (std::vector<uint32_t>{1, 2, 0}));
  EXPECT_EQ(vchip::ingress_block_modes(0), (std::vector<uint32_t>{0, 1, 2}));
}

TEST_F(Conversion, BlockModesStopAtANegativeResult) {
  for (uint64_t nth = 1; nth <= 3; ++nth) {
    swprobe::clear_plan();
    swprobe::answer("rtk_vlan_igrVlanCnvtBlkMode_set", nth, {-7, {}});
    swprobe::forget();
    EXPECT_EQ(user_vlan_ingress_convert_block_mode_init(0), -7);
    EXPECT_EQ(swprobe::take().size(), nth);
  }
}

TEST_F(Conversion, BlockModesGoOnAfterAPositiveResult) {
  swprobe::answer("rtk_vlan_igrVlanCnvtBlkMode_set", 1, {7, {}});
  swprobe::forget();
  EXPECT_EQ(user_vlan_ingress_convert_block_mode_init(0), 0);
  EXPECT_EQ(swprobe::take().size(), 3u);
  swprobe::answer("rtk_vlan_igrVlanCnvtBlkMode_set", 3, {9, {}});
  EXPECT_EQ(user_vlan_ingress_convert_block_mode_init(0), 9);
}

TEST_F(Conversion, PrintsNothing) {
  const auto fail = [] {
    user_vlan_translate_egress_add(0, 2, 0, 5, 10, 20);
    user_vlan_translate_egress_delete(0, 2, 0);
    user_vlan_ingress_convert_block_mode_init(2);
  };
  EXPECT_PRINTED(swctl_test::printed_by(fail), "", "");
}

}  // namespace
