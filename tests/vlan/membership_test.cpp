// SPDX-License-Identifier: MIT
// Ports of one VLAN.
#include <swctl/vlan.h>

#include <cstring>

#include "support/library_test.h"
#include "vlan/bitmap.h"

namespace {

using swctl_test::bitmap;
using swctl_test::chip_answers;
using swctl_test::equal;
using swctl_test::vlan_of;

// The two functions that sum up results share every rule but their call.
struct Walk {
  const char *call;
  int32_t (*run)(uint32_t lead, uint32_t unit, uint32_t vid, const user_pbmp_t *ports);
};
const Walk kWalks[] = {
    {"rtk_vlan_port_add",
     [](uint32_t lead, uint32_t unit, uint32_t vid, const user_pbmp_t *ports) {
       return user_vlan_port_add(lead, unit, vid, ports, 1);
     }},
    {"rtk_vlan_port_del", user_vlan_port_remove},
};

class SummedWalk : public swctl_test::LibraryTest, public testing::WithParamInterface<Walk> {
 protected:
  static int32_t run(const user_pbmp_t &ports) { return GetParam().run(9, 1, 1, &ports); }
  static size_t sdk_calls() {
    size_t count = 0;
    for (const swprobe::Call &call : swprobe::take())
      if (call.name == GetParam().call) ++count;
    return count;
  }
};

TEST_P(SummedWalk, WithoutInterfaceZeroMakesNoCall) {
  for (const user_pbmp_t &ports : {bitmap({}), bitmap({1, 2, 31}), bitmap({32, 255})}) {
    EXPECT_EQ(run(ports), -1);
    EXPECT_NO_CALLS();
  }
}

TEST_P(SummedWalk, EndsAtInterfaceZeroThatSucceeded) {
  EXPECT_EQ(run(bitmap({0, 1})), -1);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].line(), "adp_intf_2_phy_id(interface=0) = 28");
  EXPECT_EQ(calls[1].name, GetParam().call);
  EXPECT_EQ(calls[1].in("unit"), 1);
  EXPECT_EQ(calls[1].in("vid"), 1);
  EXPECT_EQ(calls[1].in("port"), 28);
}

TEST_P(SummedWalk, AnswersTheResultLessOne) {
  for (const int32_t result : {2, 0x10004, -1, -5, INT32_MAX}) {
    swprobe::clear_plan();
    chip_answers(GetParam().call, result);
    EXPECT_EQ(run(bitmap({0, 1})), result - 1);
  }
  chip_answers(GetParam().call, INT32_MIN);
  EXPECT_EQ(run(bitmap({0, 1})), INT32_MAX);
}

TEST_P(SummedWalk, GoesOnAfterAResultOfOne) {
  // -1 + 1 is 0, and 0 goes on; the next result that is not 0 ends the walk.
  chip_answers(GetParam().call, 0);
  swprobe::answer(GetParam().call, 1, {1, {}});
  swprobe::answer(GetParam().call, 3, {7, {}});
  swprobe::forget();
  EXPECT_EQ(run(bitmap({0, 5, 31, 40})), 7);
  EXPECT_EQ(sdk_calls(), 3u);
}

TEST_P(SummedWalk, LooksAtThirtyTwoInterfaces) {
  chip_answers(GetParam().call, 0);
  swprobe::answer(GetParam().call, 1, {1, {}});
  swprobe::forget();
  EXPECT_EQ(run(bitmap({0, 5, 31, 32, 255})), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 6u);
  EXPECT_EQ(calls[4].line(), "adp_intf_2_phy_id(interface=31) = -1");
}

INSTANTIATE_TEST_SUITE_P(AddAndRemove, SummedWalk, testing::ValuesIn(kWalks));

using Membership = swctl_test::LibraryTest;

TEST_F(Membership, AddPassesTheUntaggedFlagOn) {
  const user_pbmp_t ports = bitmap({0});
  chip_answers("rtk_vlan_port_add", 0);
  for (const uint32_t flag : {0u, 1u, 2u, 0xFFFFFFFFu}) {
    swprobe::forget();
    EXPECT_EQ(user_vlan_port_add(0, 0, 1, &ports, flag), -1);
    EXPECT_EQ(static_cast<uint32_t>(swprobe::take()[1].in("untagged")), flag);
  }
}

TEST_F(Membership, AddAndRemoveChangeTheChip) {
  const user_pbmp_t ports = bitmap({0});
  ASSERT_EQ(user_vlan_create(0, 1, 10), 0);
  EXPECT_EQ(user_vlan_port_add(0, 1, 10, &ports, 1), -1);
  EXPECT_EQ(vlan_of(1, 10), (vchip::VlanView{10, 0x10000000, 0x10000000, 0}));
  EXPECT_EQ(user_vlan_port_add(0, 1, 10, &ports, 0), -1);
  EXPECT_EQ(vlan_of(1, 10), (vchip::VlanView{10, 0x10000000, 0, 0}));
  EXPECT_EQ(user_vlan_port_remove(0, 1, 10, &ports), -1);
  EXPECT_EQ(vlan_of(1, 10), (vchip::VlanView{10, 0, 0, 0}));
}

TEST_F(Membership, SetTakesChipPortsOfTheFirstWord) {
  const user_pbmp_t member = bitmap({0, 5, 28, 32, 70});
  const user_pbmp_t untagged = bitmap({5, 33});
  ASSERT_EQ(user_vlan_create(0, 1, 10), 0);
  swprobe::forget();
  EXPECT_EQ(user_vlan_port_set(9, 1, 10, &member, &untagged), 0);
  EXPECT_CALLS("rtk_vlan_port_set(unit=1, vid=10, member=0x10000021, untagged=0x20) = 0");
  EXPECT_EQ(vlan_of(1, 10), (vchip::VlanView{10, 0x10000021, 0x20, 0}));
  EXPECT_EQ(member.word[1], 1u);
}

TEST_F(Membership, SetPassesResultsOn) {
  const user_pbmp_t high = bitmap({31});
  const user_pbmp_t none = {};
  EXPECT_EQ(user_vlan_port_set(0, 0, 1, &high, &none), VCHIP_E_PORT);
  chip_answers("rtk_vlan_port_set", 5);
  EXPECT_EQ(user_vlan_port_set(0, 0, 1, &high, &none), 5);
}

TEST_F(Membership, GetFillsAllEightWords) {
  const user_pbmp_t member = bitmap({0, 28});
  const user_pbmp_t untagged = bitmap({28});
  ASSERT_EQ(user_vlan_port_set(0, 1, 1, &member, &untagged), 0);
  swprobe::forget();
  user_pbmp_t read[2];
  memset(read, 0xA5, sizeof read);
  EXPECT_EQ(user_vlan_port_get(9, 1, 1, &read[0], &read[1]), 0);
  EXPECT_CALLS("rtk_vlan_port_get(unit=1, vid=1, member=>0x10000001, untagged=>0x10000000) = 0");
  EXPECT_TRUE(equal(read[0], {0x10000001}));
  EXPECT_TRUE(equal(read[1], {0x10000000}));
}

TEST_F(Membership, GetWritesWhateverTheResult) {
  user_pbmp_t read[2];
  memset(read, 0xA5, sizeof read);
  EXPECT_EQ(user_vlan_port_get(0, 0, 99, &read[0], &read[1]), VCHIP_E_VLAN);
  EXPECT_TRUE(equal(read[0], {}));
  EXPECT_TRUE(equal(read[1], {}));
  chip_answers("rtk_vlan_port_get", -7, {{"member", 0x80000002}, {"untagged", 3}});
  EXPECT_EQ(user_vlan_port_get(0, 0, 1, &read[0], &read[1]), -7);
  EXPECT_TRUE(equal(read[0], {0x80000002}));
  EXPECT_TRUE(equal(read[1], {3}));
}

TEST_F(Membership, PrintsNothing) {
  user_pbmp_t ports = bitmap({0});
  const auto fail = [&] {
    user_vlan_port_add(0, 2, 1, &ports, 0);
    user_vlan_port_remove(0, 2, 1, &ports);
    user_vlan_port_set(0, 2, 1, &ports, &ports);
    user_vlan_port_get(0, 2, 1, &ports, &ports);
  };
  EXPECT_PRINTED(swctl_test::printed_by(fail), "", "");
}

}  // namespace
