// SPDX-License-Identifier: MIT
// Ranges of VLANs.
#include <swctl/vlan.h>

#include "support/library_test.h"
#include "vlan/bitmap.h"

namespace {

using swctl_test::bitmap;
using swctl_test::chip_answers;
using swctl_test::vlan_of;

using VlanRange = swctl_test::LibraryTest;

TEST_F(VlanRange, CreateSkipsVlanOne) {
  EXPECT_EQ(user_vlan_createEx(9, 1, 1, 3), 0);
  EXPECT_CALLS("rtk_vlan_create(unit=1, vid=2) = 0", "rtk_vlan_create(unit=1, vid=3) = 0");
  EXPECT_EQ(vchip::vlans(1).size(), 3u);
  EXPECT_EQ(user_vlan_createEx(0, 1, 1, 1), 0);
  EXPECT_NO_CALLS();
}

TEST_F(VlanRange, CreateTriesVlanZero) {
  EXPECT_EQ(user_vlan_createEx(0, 0, 0, 2), VCHIP_E_VALUE);
  EXPECT_CALLS("rtk_vlan_create(unit=0, vid=0) = -1004");
}

TEST_F(VlanRange, CreateGoesOnWhereVlansExist) {
  EXPECT_EQ(user_vlan_createEx(0, 0, 10, 12), 0);
  swprobe::forget();
  EXPECT_EQ(user_vlan_createEx(0, 0, 10, 12), 0x10004);
  EXPECT_EQ(swprobe::take().size(), 3u);
  EXPECT_EQ(user_vlan_createEx(0, 0, 10, 13), 0);
  EXPECT_EQ(user_vlan_createEx(0, 0, 9, 12), 0x10004);
  EXPECT_EQ(vchip::vlans(0).size(), 6u);
}

TEST_F(VlanRange, CreateStopsAtAnyOtherResult) {
  for (const int32_t result : {-5, 5, 0x10003, 0x10005}) {
    swprobe::clear_plan();
    chip_answers("rtk_vlan_create", 0);
    swprobe::answer("rtk_vlan_create", 2, {result, {}});
    swprobe::forget();
    EXPECT_EQ(user_vlan_createEx(0, 0, 10, 20), result);
    EXPECT_EQ(swprobe::take().size(), 2u);
  }
}

TEST_F(VlanRange, DestroyBeginsWithVlanOne) {
  ASSERT_EQ(user_vlan_createEx(0, 1, 2, 3), 0);
  swprobe::forget();
  EXPECT_EQ(user_vlan_destroyEx(9, 1, 1, 3), 0);
  EXPECT_CALLS("rtk_vlan_destroy(unit=1, vid=1) = 0", "rtk_vlan_destroy(unit=1, vid=2) = 0",
               "rtk_vlan_destroy(unit=1, vid=3) = 0");
  EXPECT_EQ(vchip::vlans(1).size(), 0u);
}

TEST_F(VlanRange, DestroyStopsAtAnyResultThatIsNotZero) {
  for (const int32_t result : {-5, 5, 0x10004}) {
    swprobe::clear_plan();
    chip_answers("rtk_vlan_destroy", 0);
    swprobe::answer("rtk_vlan_destroy", 2, {result, {}});
    swprobe::forget();
    EXPECT_EQ(user_vlan_destroyEx(0, 0, 10, 20), result);
    EXPECT_EQ(swprobe::take().size(), 2u);
  }
}

TEST_F(VlanRange, BackwardRangesMakeNoCall) {
  const user_pbmp_t ports = bitmap({1});
  EXPECT_EQ(user_vlan_createEx(0, 0, 11, 10), 0);
  EXPECT_EQ(user_vlan_destroyEx(0, 0, 11, 10), 0);
  EXPECT_EQ(user_vlan_port_removeEx(0, 0, 11, 10, &ports), 0);
  EXPECT_EQ(user_vlan_port_addEx(0, 0, 11, 10, &ports, &ports), -1);
  EXPECT_NO_CALLS();
}

TEST_F(VlanRange, AreComparedWhenTheHighHalfIsGone) {
  const user_pbmp_t none = {};
  chip_answers("rtk_vlan_create", 0);
  chip_answers("rtk_vlan_destroy", 0);
  EXPECT_EQ(user_vlan_createEx(0, 0, 0x2000A, 0x1000A), 0);
  EXPECT_EQ(user_vlan_destroyEx(0, 0, 0xFFFF000A, 10), 0);
  EXPECT_EQ(user_vlan_port_addEx(0, 0, 0x20001, 0x10001, &none, &none), 0);
  EXPECT_EQ(user_vlan_createEx(0, 0, 11, 0x1000A), 0);
  EXPECT_CALLS("rtk_vlan_create(unit=0, vid=10) = 0 !", "rtk_vlan_destroy(unit=0, vid=10) = 0 !",
               "rtk_vlan_port_get(unit=0, vid=1, member=>0x1fffffff, untagged=>0x1fffffff) = 0",
               "rtk_vlan_port_set(unit=0, vid=1, member=0x1fffffff, untagged=0x1fffffff) = 0");
}

TEST_F(VlanRange, EndAtTheHighestId) {
  chip_answers("rtk_vlan_create", 0);
  chip_answers("rtk_vlan_destroy", 0);
  EXPECT_EQ(user_vlan_createEx(0, 0, 0xFFFE, 0xFFFF), 0);
  EXPECT_EQ(user_vlan_destroyEx(0, 0, 0xFFFE, 0xFFFF), 0);
  EXPECT_EQ(swprobe::take().size(), 4u);
}

TEST_F(VlanRange, AddPutsPortsIntoEveryVlan) {
  ASSERT_EQ(user_vlan_createEx(0, 1, 10, 11), 0);
  const user_pbmp_t old = bitmap({5});
  ASSERT_EQ(user_vlan_port_set(0, 1, 10, &old, &old), 0);
  swprobe::forget();
  const user_pbmp_t tagged = bitmap({25, 6});
  const user_pbmp_t untagged = bitmap({0, 26});
  EXPECT_EQ(user_vlan_port_addEx(9, 1, 10, 11, &tagged, &untagged), 0);
  EXPECT_CALLS("rtk_vlan_port_get(unit=1, vid=10, member=>0x20, untagged=>0x20) = 0",
               "adp_intf_2_phy_id(interface=6) = 5", "adp_intf_2_phy_id(interface=25) = 24",
               "adp_intf_2_phy_id(interface=0) = 28", "adp_intf_2_phy_id(interface=26) = 26",
               "rtk_vlan_port_set(unit=1, vid=10, member=0x15000020, untagged=0x14000000) = 0",
               "rtk_vlan_port_get(unit=1, vid=11, member=>0x0, untagged=>0x0) = 0",
               "adp_intf_2_phy_id(interface=6) = 5", "adp_intf_2_phy_id(interface=25) = 24",
               "adp_intf_2_phy_id(interface=0) = 28", "adp_intf_2_phy_id(interface=26) = 26",
               "rtk_vlan_port_set(unit=1, vid=11, member=0x15000020, untagged=0x14000000) = 0");
  EXPECT_EQ(vlan_of(1, 10), (vchip::VlanView{10, 0x15000020, 0x14000000, 0}));
}

TEST_F(VlanRange, AddLeavesAPortOfBothBitmapsUntagged) {
  const user_pbmp_t ports = bitmap({3});
  const user_pbmp_t none = {};
  ASSERT_EQ(user_vlan_create(0, 0, 10), 0);
  EXPECT_EQ(user_vlan_port_addEx(0, 0, 10, 10, &ports, &ports), 0);
  EXPECT_EQ(vlan_of(0, 10), (vchip::VlanView{10, 4, 4, 0}));
  EXPECT_EQ(user_vlan_port_addEx(0, 0, 10, 10, &ports, &none), 0);
  EXPECT_EQ(vlan_of(0, 10), (vchip::VlanView{10, 4, 0, 0}));
}

TEST_F(VlanRange, AddLooksAtAllPortsOfTheBitmaps) {
  const user_pbmp_t tagged = bitmap({31, 32, 40, 255});
  const user_pbmp_t untagged = bitmap({63, 64, 254});
  chip_answers("adp_intf_2_phy_id", 9);
  EXPECT_EQ(user_vlan_port_addEx(0, 0, 1, 1, &tagged, &untagged), 0);
  std::vector<int64_t> asked;
  for (const swprobe::Call &call : swprobe::take())
    if (call.name == "adp_intf_2_phy_id") asked.push_back(call.in("interface"));
  EXPECT_EQ(asked, (std::vector<int64_t>{31, 32, 40, 255, 63, 64, 254}));
}

TEST_F(VlanRange, AddTakesTheAdaptersAnswerAsItIs) {
  // No interface 40 on this board: the answer -1 falls on bit 31.
  const user_pbmp_t tagged = bitmap({40});
  const user_pbmp_t untagged = bitmap({1});
  ASSERT_EQ(user_vlan_createEx(0, 0, 10, 11), 0);
  swprobe::forget();
  EXPECT_EQ(user_vlan_port_addEx(0, 0, 10, 11, &tagged, &untagged), VCHIP_E_PORT);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 8u);
  EXPECT_EQ(calls[3].line(),
            "rtk_vlan_port_set(unit=0, vid=10, member=0x80000001, untagged=0x1) = -1002");
}

TEST_F(VlanRange, AddStartsFromNothingWhereTheReadFails) {
  const user_pbmp_t tagged = bitmap({1});
  const user_pbmp_t none = {};
  chip_answers("rtk_vlan_port_get", -3);
  EXPECT_EQ(user_vlan_port_addEx(0, 0, 1, 1, &tagged, &none), 0);
  EXPECT_EQ(vlan_of(0, 1), (vchip::VlanView{1, 1, 0, 0}));
}

TEST_F(VlanRange, AddUsesWhatAFailedReadWrote) {
  const user_pbmp_t none = {};
  chip_answers("rtk_vlan_port_get", -3, {{"member", 6}, {"untagged", 2}});
  EXPECT_EQ(user_vlan_port_addEx(0, 0, 1, 1, &none, &none), 0);
  EXPECT_EQ(vlan_of(0, 1), (vchip::VlanView{1, 6, 2, 0}));
}

TEST_F(VlanRange, AddGoesOnAndAnswersForTheLastVlan) {
  const user_pbmp_t tagged = bitmap({1});
  const user_pbmp_t none = {};
  ASSERT_EQ(user_vlan_create(0, 0, 11), 0);
  EXPECT_EQ(user_vlan_port_addEx(0, 0, 10, 11, &tagged, &none), 0);
  EXPECT_EQ(vlan_of(0, 11).member, 1u);
  EXPECT_EQ(user_vlan_port_addEx(0, 0, 11, 12, &tagged, &none), VCHIP_E_VLAN);
}

TEST_F(VlanRange, RemoveTakesPortsOutOfEveryVlan) {
  const user_pbmp_t ports = bitmap({2, 0, 31, 40});
  chip_answers("rtk_vlan_port_del", 0);
  EXPECT_EQ(user_vlan_port_removeEx(9, 1, 10, 11, &ports), 0);
  EXPECT_CALLS(
      "adp_intf_2_phy_id(interface=0) = 28", "rtk_vlan_port_del(unit=1, vid=10, port=28) = 0 !",
      "adp_intf_2_phy_id(interface=2) = 1", "rtk_vlan_port_del(unit=1, vid=10, port=1) = 0 !",
      "adp_intf_2_phy_id(interface=31) = -1", "rtk_vlan_port_del(unit=1, vid=10, port=-1) = 0 !",
      "adp_intf_2_phy_id(interface=0) = 28", "rtk_vlan_port_del(unit=1, vid=11, port=28) = 0 !",
      "adp_intf_2_phy_id(interface=2) = 1", "rtk_vlan_port_del(unit=1, vid=11, port=1) = 0 !",
      "adp_intf_2_phy_id(interface=31) = -1", "rtk_vlan_port_del(unit=1, vid=11, port=-1) = 0 !");
}

TEST_F(VlanRange, RemoveChangesTheChip) {
  const user_pbmp_t ports = bitmap({1, 25});
  EXPECT_EQ(user_vlan_port_removeEx(0, 1, 1, 1, &ports), 0);
  EXPECT_EQ(vlan_of(1, 1), (vchip::VlanView{1, 0x1EFFFFFE, 0x1EFFFFFE, 0}));
  EXPECT_EQ(vlan_of(0, 1).member, 0x1FFFFFFFu);
}

TEST_F(VlanRange, RemoveStopsAtAnyResultThatIsNotZero) {
  const user_pbmp_t ports = bitmap({1, 2, 3});
  for (const int32_t result : {-5, 5}) {
    swprobe::clear_plan();
    swprobe::answer("rtk_vlan_port_del", 5, {result, {}});
    for (const uint32_t vid : {10u, 11u, 12u}) user_vlan_create(0, 0, vid);
    swprobe::forget();
    EXPECT_EQ(user_vlan_port_removeEx(0, 0, 10, 12, &ports), result);
    EXPECT_EQ(swprobe::take().size(), 10u);
  }
}

TEST_F(VlanRange, PrintNothing) {
  const user_pbmp_t ports = bitmap({1});
  const auto fail = [&] {
    user_vlan_createEx(0, 2, 10, 11);
    user_vlan_destroyEx(0, 2, 10, 11);
    user_vlan_port_addEx(0, 2, 10, 11, &ports, &ports);
    user_vlan_port_removeEx(0, 2, 10, 11, &ports);
  };
  EXPECT_PRINTED(swctl_test::printed_by(fail), "", "");
}

}  // namespace
