// SPDX-License-Identifier: MIT
// The walk that the caller steps through itself.
#include "l2/table.h"

namespace {

using l2_test::Entry;
using l2_test::kStatic;
using l2_test::logged;
using l2_test::removed_line;
using swctl_test::chip_answers;
using testing::ElementsAre;

constexpr const char *kStepScan = "rtk_l2_nextValidAddr_get";

user_l2_addr_t filled() {
  user_l2_addr_t record;
  memset(&record, 0x5A, sizeof record);
  return record;
}

bool is_untouched(const user_l2_addr_t &record) {
  const user_l2_addr_t before = filled();
  return memcmp(&record, &before, sizeof record) == 0;
}

using L2Step = l2_test::L2Test;

TEST_F(L2Step, ReadsEntryByEntry) {
  put({{.number = 1}, {.vid = 20, .number = 2}});
  user_l2_addr_t record = filled();
  int32_t index = -1;
  EXPECT_EQ(user_netlink_mac_nextValidAddr_get(9, &record, &index), 0);
  EXPECT_EQ(record.mac[5], 1);
  EXPECT_EQ(index, 172);
  EXPECT_EQ(user_netlink_mac_nextValidAddr_get(9, &record, &index), 0);
  EXPECT_EQ(record.mac[5], 2);
  EXPECT_EQ(index, 216);
  EXPECT_EQ(user_netlink_mac_nextValidAddr_get(9, &record, &index), -1);
  EXPECT_THAT(
      l2_test::names(swprobe::take()),
      ElementsAre(kStepScan, "rtk_vlan_port_get", kStepScan, "rtk_vlan_port_get", kStepScan));
}

TEST_F(L2Step, AsksUnitZeroForStaticEntriesToo) {
  user_l2_addr_t record = filled();
  int32_t index = 5;
  EXPECT_EQ(user_netlink_mac_nextValidAddr_get(1, &record, &index), -1);
  EXPECT_CALLS("rtk_l2_nextValidAddr_get(unit=0, index=5, include_static=1) = -1031");
  EXPECT_EQ(index, 5);
}

TEST_F(L2Step, ConvertsTheEntryAndLeavesTheRest) {
  const Entry entry = {
      .vid = 20, .number = 7, .port = 5, .trunk = 6, .flags = 0x12000008, .aux = 9};
  put({entry});
  mark(entry, 0, 9);
  user_l2_addr_t record = filled();
  int32_t index = -1;
  EXPECT_EQ(user_netlink_mac_nextValidAddr_get(0, &record, &index), 0);
  user_l2_addr_t expected = filled();
  expected.flags = 0x12000008;
  memcpy(expected.mac, l2_test::mac(7).data(), sizeof expected.mac);
  expected.vid = 20;
  expected.port = 5;
  expected.tgid = 6;
  expected.aux = 9;
  EXPECT_EQ(memcmp(&record, &expected, sizeof record), 0);
}

TEST_F(L2Step, MarksViolations) {
  const Entry entry = {.flags = kStatic};
  put({entry});
  mark(entry, 3);
  user_l2_addr_t record = filled();
  int32_t index = -1;
  EXPECT_EQ(user_netlink_mac_nextValidAddr_get(0, &record, &index), 0);
  EXPECT_EQ(record.flags, 0x800008u);
}

TEST_F(L2Step, VlanIsTheLowHalfOfTheChipsWord) {
  swprobe::answer(kStepScan, 1, {.result = 0, .outputs = {{"entry.vid", 0x1000A}}});
  chip_answers("rtk_vlan_port_get", 0);
  user_l2_addr_t record = filled();
  int32_t index = -1;
  swprobe::forget();
  EXPECT_EQ(user_netlink_mac_nextValidAddr_get(0, &record, &index), 0);
  EXPECT_EQ(record.vid, 10);
  EXPECT_EQ(record.port, 0) << "the entry is cleared before the scan";
  EXPECT_EQ(swprobe::take().at(1).in("vid"), 0x1000A);
}

TEST_F(L2Step, EndAndFailureLeaveTheRecordAlone) {
  put({{}});
  for (const int32_t result : {-1, 1, 0x10004}) {
    swprobe::clear_plan();
    chip_answers(kStepScan, result, {{"entry.vid", 10}});
    user_l2_addr_t record = filled();
    int32_t index = -1;
    swprobe::forget();
    EXPECT_EQ(user_netlink_mac_nextValidAddr_get(0, &record, &index), -1);
    EXPECT_TRUE(is_untouched(record));
    EXPECT_EQ(swprobe::take().size(), 1u);
  }
}

TEST_F(L2Step, StaleEntryIsRemovedAndAnsweredAsAnEnd) {
  put({{.vid = 30, .number = 1, .flags = kStatic}, {.vid = 10, .number = 0x41}});
  ASSERT_EQ(vchip_trace_set(1), 0);
  user_l2_addr_t record = filled();
  int32_t index = -1;
  EXPECT_EQ(user_netlink_mac_nextValidAddr_get(0, &record, &index), -1);
  EXPECT_TRUE(is_untouched(record));
  EXPECT_EQ(held(), std::vector<std::string>{"10 02:00:00:00:00:41"});
  const auto calls = swprobe::take();
  EXPECT_THAT(logged(calls), ElementsAre(removed_line(1)));
  EXPECT_THAT(l2_test::names(calls),
              ElementsAre(kStepScan, "rtk_vlan_port_get", "rtk_l2_addr_del", "sys_trace_get",
                          "sys_trace_add_log", "Log_logging_func"));
  EXPECT_EQ(calls[2].line(), "rtk_l2_addr_del(unit=0, vid=30, mac=[02 00 00 00 00 01]) = 0");
  ASSERT_EQ(vchip::platform().trace.size(), 1u);
  EXPECT_EQ(l2_test::function_of(vchip::platform().trace[0]), "user_netlink_mac_nextValidAddr_get");
  EXPECT_EQ(vchip::platform().trace[0].message, removed_line(1));
  // The scan has moved on: the caller may go on from there.
  EXPECT_EQ(user_netlink_mac_nextValidAddr_get(0, &record, &index), 0);
  EXPECT_EQ(record.mac[5], 0x41);
}

TEST_F(L2Step, StaleDynamicEntryIsNotLogged) {
  for (const uint32_t flags : {0u, 0x02u, 0x0Au, 0x0Cu}) {
    put({{.vid = 30, .flags = flags}});
    user_l2_addr_t record = filled();
    int32_t index = -1;
    EXPECT_EQ(user_netlink_mac_nextValidAddr_get(0, &record, &index), -1);
    EXPECT_EQ(logged(swprobe::take()).size(), 0u);
    EXPECT_EQ(held().size(), 0u);
  }
}

TEST_F(L2Step, FailedPurgeIsIgnored) {
  put({{.vid = 30}});
  chip_answers("rtk_l2_addr_del", -1);
  user_l2_addr_t record = filled();
  int32_t index = -1;
  EXPECT_EQ(user_netlink_mac_nextValidAddr_get(0, &record, &index), -1);
  EXPECT_TRUE(is_untouched(record));
}

TEST_F(L2Step, OnlyANegativeVlanAnswerIsStale) {
  put({{.vid = 30}});
  chip_answers("rtk_vlan_port_get", 7);
  user_l2_addr_t record = filled();
  int32_t index = -1;
  EXPECT_EQ(user_netlink_mac_nextValidAddr_get(0, &record, &index), 0);
  EXPECT_EQ(record.vid, 30);
}

}  // namespace
