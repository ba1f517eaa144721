// SPDX-License-Identifier: MIT
#include "l2/table.h"

namespace {

using l2_test::Entry;
using l2_test::kStatic;
using l2_test::logged;
using swctl_test::chip_answers;
using testing::ElementsAre;

user_l2_addr_t address(uint32_t flags) {
  user_l2_addr_t record;
  memset(&record, 0x5A, sizeof record);  // what is not read must not reach the chip
  record.flags = flags;
  memcpy(record.mac, l2_test::mac(0x1F).data(), sizeof record.mac);
  record.vid = 10;
  record.port = 5;
  record.tgid = 6;
  record.extra = 77;
  return record;
}

constexpr const char *kAddedLine = "User add static MAC 02:00:00:00:00:1f into network system\n";

using L2Addr = l2_test::L2Test;

TEST_F(L2Addr, AddBuildsTheEntry) {
  for (const uint32_t lead : {0u, 0xFFFFFFFFu}) {
    swprobe::forget();
    EXPECT_EQ(user_mac_addr_add(lead, address(0x12800021)), 0);
    EXPECT_CALLS(
        "rtk_l2_addr_add(unit=0, entry.vid=10, entry.mac=[02 00 00 00 00 1f], "
        "entry.port=5, entry.trunk=6, entry.flags=0x12800021, entry.state=0x0, entry.aux=0x0, "
        "entry.rest=[0x0 0x0 0x0 0x0], entry.extra=0x4d) = 0");
  }
  EXPECT_THAT(vchip::addresses(0), ElementsAre(vchip::AddressView{212, 10, "02:00:00:00:00:1f", 5,
                                                                  6, 0x12800021, 0, 0, 77, 0}));
  EXPECT_EQ(held(1).size(), 0u);
}

TEST_F(L2Addr, AddExtendsTheVlanWithZeroes) {
  user_l2_addr_t record = address(0);
  record.vid = 0xFFFF;
  EXPECT_EQ(user_mac_addr_add(0, record), VCHIP_E_VALUE);
  EXPECT_EQ(swprobe::take().at(0).in("entry.vid"), 0xFFFF);
}

TEST_F(L2Addr, OnlyStaticAdditionsAreLogged) {
  for (uint32_t flags = 0; flags < 0x10; ++flags) {
    swprobe::forget();
    EXPECT_EQ(user_mac_addr_add(0, address(flags | 0xABCDEF00)), 0);
    const std::vector<std::string> expected =
        (flags & 0x0E) == 8 ? std::vector<std::string>{kAddedLine} : std::vector<std::string>{};
    EXPECT_EQ(logged(swprobe::take()), expected) << flags;
  }
}

TEST_F(L2Addr, AdditionIsLoggedWhateverTheSdkAnswers) {
  for (const int32_t result : {-1, -1032, 0, 5}) {
    swprobe::clear_plan();
    chip_answers("rtk_l2_addr_add", result);
    swprobe::forget();
    EXPECT_EQ(user_mac_addr_add(0, address(kStatic)), result);
    const auto calls = swprobe::take();
    EXPECT_THAT(logged(calls), ElementsAre(kAddedLine));
    EXPECT_THAT(l2_test::names(calls),
                ElementsAre("rtk_l2_addr_add", "sys_trace_get", "Log_logging_func"));
  }
}

TEST_F(L2Addr, AdditionIsTraced) {
  ASSERT_EQ(vchip_trace_set(1), 0);
  EXPECT_EQ(user_mac_addr_add(0, address(kStatic)), 0);
  const std::vector<vchip::TraceRecord> trace = vchip::platform().trace;
  ASSERT_EQ(trace.size(), 1u);
  EXPECT_EQ(l2_test::function_of(trace[0]), "user_mac_addr_add");
  EXPECT_EQ(trace[0].message, kAddedLine);
  EXPECT_EQ(user_mac_addr_add(0, address(0)), 0);
  EXPECT_EQ(vchip::platform().trace.size(), 1u);
}

TEST_F(L2Addr, GetWritesFourWords) {
  const Entry entry = {.vid = 20, .number = 7, .port = 5, .trunk = 6, .flags = 0x41};
  put({entry});
  mark(entry, 0xFFFFFFFF, 9);
  user_l2_addr_t record;
  memset(&record, 0x5A, sizeof record);
  user_l2_addr_t expected = record;
  const auto mac = l2_test::mac(7);
  EXPECT_EQ(user_mac_addr_get(7, mac.data(), 0xABCD0014, &record), 0);
  expected.flags = 0x800041;
  expected.port = 5;
  expected.tgid = 6;
  expected.aux = 9;
  EXPECT_EQ(memcmp(&record, &expected, sizeof record), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].name, "rtk_l2_addr_get");
  EXPECT_EQ(calls[0].in("unit"), 0);
  EXPECT_EQ(calls[0].in("entry.vid"), 20);
  EXPECT_EQ(calls[0].in("entry.mac[5]"), 7);
  for (const char *cleared : {"entry.port", "entry.trunk", "entry.flags", "entry.state",
                              "entry.aux", "entry.rest[3]", "entry.extra"})
    EXPECT_EQ(calls[0].in(cleared), 0) << cleared;
}

TEST_F(L2Addr, FailedGetWritesTheClearedEntry) {
  user_l2_addr_t record;
  memset(&record, 0x5A, sizeof record);
  user_l2_addr_t expected = record;
  EXPECT_EQ(user_mac_addr_get(0, l2_test::mac(7).data(), 20, &record), VCHIP_E_L2_ENTRY);
  expected.flags = 0;
  expected.port = 0;
  expected.tgid = 0;
  expected.aux = 0;
  EXPECT_EQ(memcmp(&record, &expected, sizeof record), 0);
}

TEST_F(L2Addr, GetReturnsAnyResultAndWritesWhatTheSdkWrote) {
  for (const int32_t result : {-7, 7}) {
    swprobe::clear_plan();
    chip_answers("rtk_l2_addr_get", result, {{"entry.state", 2}, {"entry.flags", 0x11}});
    user_l2_addr_t record = {};
    EXPECT_EQ(user_mac_addr_get(0, l2_test::mac(7).data(), 20, &record), result);
    EXPECT_EQ(record.flags, 0x11u);
  }
}

TEST_F(L2Addr, DeleteRemovesOneEntryUnlogged) {
  put({{.vid = 10, .flags = kStatic}, {.vid = 20, .flags = kStatic}});
  EXPECT_EQ(user_mac_addr_delete(7, l2_test::mac(1).data(), 0xFFFF000A), 0);
  EXPECT_CALLS("rtk_l2_addr_del(unit=0, vid=10, mac=[02 00 00 00 00 01]) = 0");
  EXPECT_EQ(held(), std::vector<std::string>{"20 02:00:00:00:00:01"});
  EXPECT_EQ(user_mac_addr_delete(7, l2_test::mac(1).data(), 10), VCHIP_E_L2_ENTRY);
}

TEST_F(L2Addr, DeleteReturnsAnyResult) {
  for (const int32_t result : {-1, 0, 9, INT32_MIN}) {
    swprobe::clear_plan();
    chip_answers("rtk_l2_addr_del", result);
    EXPECT_EQ(user_mac_addr_delete(0, l2_test::mac(1).data(), 10), result);
  }
}

TEST_F(L2Addr, NothingIsPrinted) {
  const auto all = [] {
    user_l2_addr_t record = address(kStatic);
    record.port = 99;
    user_mac_addr_add(0, record);
    user_mac_addr_get(0, record.mac, 10, &record);
    user_mac_addr_delete(0, record.mac, 10);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
