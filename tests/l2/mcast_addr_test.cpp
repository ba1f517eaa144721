// SPDX-License-Identifier: MIT
#include "l2/table.h"
#include "support/group.h"

namespace {

using swctl_test::chip_answers;
using swctl_test::kGroup;
using swctl_test::kGroupAdd;
using swctl_test::kGroupDel;
using swctl_test::kGroupGet;
using swctl_test::kGroupText;
using testing::ElementsAre;
using vchip::GroupView;

user_l2_addr_t group(uint32_t ports) {
  return swctl_test::group_record<user_l2_addr_t>(10, ports);
}

class L2McastAddr : public l2_test::L2Test {
 protected:
  static void put_group(uint32_t ports, uint32_t index = 0) {
    chip_l2_mcast_entry entry = {};
    entry.vid = 10;
    memcpy(entry.mac, kGroup, sizeof entry.mac);
    entry.portmask = ports;
    entry.fwdIndex = index;
    ASSERT_EQ(rtk_l2_mcastAddr_add(0, &entry), 0);
    swprobe::forget();
  }
};

TEST_F(L2McastAddr, AddMakesAGroup) {
  EXPECT_EQ(user_mac_mcast_addr_add(3, group(0x11)), 0);
  EXPECT_CALLS(
      "rtk_l2_mcastAddr_get(unit=0, entry.vid=10, entry.mac=[01 00 5e 00 00 05], "
      "entry.portmask=0x11, entry.fwdIndex=0, entry.rest=[0x0 0x0 0x0]) = -1031",
      "rtk_l2_mcastAddr_add(unit=0, entry.vid=10, entry.mac=[01 00 5e 00 00 05], "
      "entry.portmask=0x11, entry.fwdIndex=0, entry.rest=[0x0 0x0 0x0]) = 0");
  EXPECT_THAT(vchip::groups(0), ElementsAre(GroupView{0, 10, kGroupText, 0x11, 1}));
  EXPECT_EQ(vchip::groups(1).size(), 0u);
}

TEST_F(L2McastAddr, AddMergesIntoAGroup) {
  put_group(0x6, 9);
  EXPECT_EQ(user_mac_mcast_addr_add(0, group(0x8)), 0);
  EXPECT_THAT(vchip::groups(0), ElementsAre(GroupView{0, 10, kGroupText, 0xE, 9}));
  const auto calls = swprobe::take();
  EXPECT_THAT(l2_test::names(calls), ElementsAre(kGroupGet, kGroupDel, kGroupAdd));
  EXPECT_EQ(calls[1].line(), "rtk_l2_mcastAddr_del(unit=0, vid=10, mac=[01 00 5e 00 00 05]) = 0");
  EXPECT_EQ(calls[2].in("entry.fwdIndex"), 9);
  // Only added, never removed.
  EXPECT_EQ(user_mac_mcast_addr_add(0, group(0)), 0);
  EXPECT_EQ(vchip::groups(0).at(0).portmask, 0xEu);
}

TEST_F(L2McastAddr, AddCarriesTheWholeEntryThatWasRead) {
  chip_answers(
      kGroupGet, 5,
      {{"entry.vid", 20}, {"entry.mac[5]", 9}, {"entry.rest[2]", 8}, {"entry.portmask", 1}});
  chip_answers(kGroupDel, 0);
  chip_answers(kGroupAdd, 0);
  EXPECT_EQ(user_mac_mcast_addr_add(0, group(4)), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 3u);
  EXPECT_EQ(calls[1].in("vid"), 20);
  EXPECT_EQ(calls[1].in("mac[5]"), 9);
  EXPECT_EQ(calls[2].in("entry.rest[2]"), 8);
  EXPECT_EQ(calls[2].in("entry.portmask"), 5);
}

TEST_F(L2McastAddr, AddForgetsWhatAFailedReadWrote) {
  chip_answers(kGroupGet, -1, {{"entry.portmask", 0xFF}, {"entry.vid", 99}, {"entry.fwdIndex", 3}});
  EXPECT_EQ(user_mac_mcast_addr_add(0, group(4)), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[1].in("entry.portmask"), 4);
  EXPECT_EQ(calls[1].in("entry.vid"), 10);
  EXPECT_EQ(calls[1].in("entry.fwdIndex"), 0);
}

TEST_F(L2McastAddr, AddIgnoresTheDeleteAndReturnsTheAdd) {
  put_group(1);
  for (const int32_t result : {-9, 0, 9}) {
    swprobe::clear_plan();
    chip_answers(kGroupDel, -3);
    chip_answers(kGroupAdd, result);
    EXPECT_EQ(user_mac_mcast_addr_add(0, group(2)), result);
  }
  swprobe::clear_plan();
  chip_answers(kGroupGet, -1);
  chip_answers(kGroupAdd, -8);
  EXPECT_EQ(user_mac_mcast_addr_add(0, group(2)), -8);
}

TEST_F(L2McastAddr, GetWritesTheBitmapAlone) {
  put_group(0x10000003);
  user_l2_addr_t record = group(0xFF);
  user_l2_addr_t expected = record;
  EXPECT_EQ(user_mac_mcast_addr_get(5, kGroup, 0xFFFF000A, &record), 0);
  expected.pbmp = {{0x10000003}};
  EXPECT_EQ(memcmp(&record, &expected, sizeof record), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].in("unit"), 0);
  EXPECT_EQ(calls[0].in("entry.vid"), 10);
  EXPECT_EQ(calls[0].in("entry.portmask"), 0);
}

TEST_F(L2McastAddr, FailedGetWritesAnEmptyBitmap) {
  user_l2_addr_t record = group(0xFF);
  user_l2_addr_t expected = record;
  EXPECT_EQ(user_mac_mcast_addr_get(0, kGroup, 10, &record), VCHIP_E_L2_ENTRY);
  expected.pbmp = {};
  EXPECT_EQ(memcmp(&record, &expected, sizeof record), 0);
  // Whatever the result, what the SDK wrote is handed on.
  chip_answers(kGroupGet, -5, {{"entry.portmask", 0x80000000}});
  EXPECT_EQ(user_mac_mcast_addr_get(0, kGroup, 10, &record), -5);
  EXPECT_EQ(record.pbmp.word[0], 0x80000000u);
}

TEST_F(L2McastAddr, DeletePassesThrough) {
  put_group(1);
  EXPECT_EQ(user_mac_mcast_addr_delete(5, kGroup, 0xFFFF000A), 0);
  EXPECT_CALLS("rtk_l2_mcastAddr_del(unit=0, vid=10, mac=[01 00 5e 00 00 05]) = 0");
  EXPECT_EQ(vchip::groups(0).size(), 0u);
  for (const int32_t result : {-1, 4}) {
    swprobe::clear_plan();
    chip_answers(kGroupDel, result);
    EXPECT_EQ(user_mac_mcast_addr_delete(0, kGroup, 10), result);
  }
}

TEST_F(L2McastAddr, AddWithPortmaskIsOneCall) {
  EXPECT_EQ(user_mac_mcast_add_with_portmask(kGroup, 0xFFFF000A, group(0x11).pbmp), 0);
  EXPECT_CALLS(
      "rtk_l2_mcastAddr_add(unit=0, entry.vid=10, entry.mac=[01 00 5e 00 00 05], "
      "entry.portmask=0x11, entry.fwdIndex=0, entry.rest=[0x0 0x0 0x0]) = 0");
  // The chip refuses a group that exists; nothing is merged or replaced.
  EXPECT_EQ(user_mac_mcast_add_with_portmask(kGroup, 10, group(2).pbmp), VCHIP_E_L2_EXISTS);
  EXPECT_THAT(vchip::groups(0), ElementsAre(GroupView{0, 10, kGroupText, 0x11, 1}));
  chip_answers(kGroupAdd, 6);
  EXPECT_EQ(user_mac_mcast_add_with_portmask(kGroup, 10, group(2).pbmp), 6);
}

TEST_F(L2McastAddr, ForwardingIndex) {
  put_group(1, 17);
  uint32_t index = 99;
  EXPECT_EQ(user_mac_mcast_get_fwd_index(kGroup, 0xFFFF000A, &index), 0);
  EXPECT_EQ(index, 17u);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].name, kGroupGet);
  EXPECT_EQ(calls[0].in("entry.vid"), 10);
  EXPECT_EQ(calls[0].in("entry.mac[5]"), 5);
  EXPECT_EQ(user_mac_mcast_get_fwd_index(kGroup, 20, &index), VCHIP_E_L2_ENTRY);
  EXPECT_EQ(index, 0u);
  chip_answers(kGroupGet, -2, {{"entry.fwdIndex", 4}});
  EXPECT_EQ(user_mac_mcast_get_fwd_index(kGroup, 20, &index), -2);
  EXPECT_EQ(index, 4u);
}

TEST_F(L2McastAddr, GroupsAreNeitherLoggedNorPrinted) {
  ASSERT_EQ(vchip_trace_set(1), 0);
  const auto all = [] {
    user_l2_addr_t record = group(1);
    record.flags = 8;
    uint32_t index = 0;
    user_mac_mcast_addr_add(0, record);
    user_mac_mcast_addr_get(0, kGroup, 10, &record);
    user_mac_mcast_get_fwd_index(kGroup, 10, &index);
    user_mac_mcast_addr_delete(0, kGroup, 10);
    user_mac_mcast_addr_delete(0, kGroup, 10);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
  for (const swprobe::Call &call : swprobe::take()) EXPECT_EQ(call.name.rfind("rtk_l2_", 0), 0u);
}

}  // namespace
