// SPDX-License-Identifier: MIT
#include "l2/table.h"

namespace {

using l2_test::Entry;
using l2_test::kStatic;
using l2_test::logged;
using l2_test::removed_line;
using swctl_test::chip_answers;
using testing::ElementsAre;

constexpr const char *kWalkScan = "rtk_l2_nextValidAddr_get";
constexpr const char *kVlan = "rtk_vlan_port_get";
constexpr const char *kDelete = "rtk_l2_addr_del";

// What the callback was given, and what it is to answer.
struct WalkSeen {
  std::vector<uint32_t> units;
  std::vector<chip_l2_ucast_entry> entries;
  std::vector<int32_t> answers;  // 0 when they run out
};

int32_t note(uint32_t unit, chip_l2_ucast_entry *entry, void *data) {
  WalkSeen &walked = *static_cast<WalkSeen *>(data);
  const size_t step = walked.entries.size();
  walked.units.push_back(unit);
  walked.entries.push_back(*entry);
  return step < walked.answers.size() ? walked.answers[step] : 0;
}

class L2Walk : public l2_test::L2Test {
 protected:
  WalkSeen walk(uint32_t unit = 0, std::vector<int32_t> answers = {}) {
    WalkSeen walked;
    walked.answers = std::move(answers);
    EXPECT_EQ(rtk_l2_traverse(unit, note, &walked), 0);
    return walked;
  }
};

TEST_F(L2Walk, EmptyTableNeverCallsBack) {
  EXPECT_EQ(walk().entries.size(), 0u);
  EXPECT_CALLS("rtk_l2_nextValidAddr_get(unit=0, index=-1, include_static=1) = -1031");
}

TEST_F(L2Walk, MakesTwoCallsPerEntry) {
  put({{.number = 1}, {.vid = 20, .number = 2, .port = 5, .trunk = 4, .flags = kStatic}});
  EXPECT_EQ(walk().entries.size(), 2u);
  EXPECT_CALLS(
      "rtk_l2_nextValidAddr_get(unit=0, index=-1=>172, include_static=1, entry.vid=>10, "
      "entry.mac=>[02 00 00 00 00 01], entry.port=>3, entry.trunk=>0, entry.flags=>0x0, "
      "entry.state=>0x0, entry.aux=>0x0, entry.rest=>[0x0 0x0 0x0 0x0], entry.extra=>0x0) = 0",
      "rtk_vlan_port_get(unit=0, vid=10, member=>0x0, untagged=>0x0) = 0",
      "rtk_l2_nextValidAddr_get(unit=0, index=172=>216, include_static=1, entry.vid=>20, "
      "entry.mac=>[02 00 00 00 00 02], entry.port=>5, entry.trunk=>4, entry.flags=>0x8, "
      "entry.state=>0x0, entry.aux=>0x0, entry.rest=>[0x0 0x0 0x0 0x0], entry.extra=>0x0) = 0",
      "rtk_vlan_port_get(unit=0, vid=20, member=>0x0, untagged=>0x0) = 0",
      "rtk_l2_nextValidAddr_get(unit=0, index=216, include_static=1) = -1031");
}

TEST_F(L2Walk, HandsTheEntryOnInScanOrder) {
  put({{.vid = 20, .number = 2, .port = 5, .trunk = 4, .flags = 0x12345608, .aux = 7},
       {.vid = 10, .number = 1}});
  const WalkSeen walked = walk();
  ASSERT_EQ(walked.entries.size(), 2u);
  EXPECT_EQ(walked.entries[0].vid, 10u);
  const chip_l2_ucast_entry &second = walked.entries[1];
  EXPECT_EQ(second.vid, 20u);
  EXPECT_EQ(memcmp(second.mac, l2_test::mac(2).data(), sizeof second.mac), 0);
  EXPECT_EQ(second.port, 5);
  EXPECT_EQ(second.trunk, 4);
  EXPECT_EQ(second.flags, 0x12345608u);
  EXPECT_EQ(second.aux, 7u);
}

TEST_F(L2Walk, TheUnitGoesToTheCallbackAndNotToTheSdk) {
  put({{}});
  put({{.number = 9}}, 1);
  for (const uint32_t unit : {0u, 1u, 77u}) {
    swprobe::forget();
    const WalkSeen walked = walk(unit);
    ASSERT_EQ(walked.units, std::vector<uint32_t>{unit});
    EXPECT_EQ(walked.entries[0].mac[5], 1);
    for (const swprobe::Call &call : swprobe::take()) EXPECT_EQ(call.in("unit"), 0);
  }
}

TEST_F(L2Walk, OnlyANegativeAnswerEndsIt) {
  put({{.number = 1}, {.number = 2}, {.number = 3}});
  EXPECT_EQ(walk(0, {-1}).entries.size(), 1u);
  EXPECT_EQ(walk(0, {0, INT32_MIN}).entries.size(), 2u);
  EXPECT_EQ(walk(0, {5, INT32_MAX, 1}).entries.size(), 3u);
}

TEST_F(L2Walk, MarksViolations) {
  const Entry entry = {.flags = 0x28};
  put({entry});
  for (const uint32_t state : {1u, 0xFFFFFFFFu, 3u}) {
    mark(entry, state);
    EXPECT_EQ(walk().entries.at(0).flags, 0x800028u) << state;
    EXPECT_EQ(walk().entries.at(0).state, state);
  }
  for (const uint32_t state : {0u, 2u, 0xFFFFFFFEu}) {
    mark(entry, state);
    EXPECT_EQ(walk().entries.at(0).flags, 0x28u) << state;
  }
}

TEST_F(L2Walk, AnyNonZeroScanResultIsTheEnd) {
  put({{.number = 1}, {.number = 2}});
  for (const int32_t result : {-1, 1, 0x10004, INT32_MIN}) {
    swprobe::clear_plan();
    swprobe::answer(kWalkScan, 2, {.result = result, .outputs = {{"entry.vid", 10}}});
    EXPECT_EQ(walk().entries.size(), 1u) << result;
  }
}

TEST_F(L2Walk, TheEntryIsClearedOnceAndNotBetweenSteps) {
  // A scan that writes single words shows what was there before.
  swprobe::answer(kWalkScan, 1, {.result = 0, .outputs = {{"entry.vid", 10}, {"entry.aux", 5}}});
  swprobe::answer(kWalkScan, 2, {.result = 0, .outputs = {{"entry.port", 6}}});
  const WalkSeen walked = walk();
  ASSERT_EQ(walked.entries.size(), 2u);
  const chip_l2_ucast_entry expected = {10, {0, 0, 0, 0, 0, 0}, {0, 0}, 0, 0, 0, 0,
                                        5,  {0, 0, 0, 0},       0};
  EXPECT_EQ(memcmp(&walked.entries[0], &expected, sizeof expected), 0);
  EXPECT_EQ(walked.entries[1].vid, 10u);
  EXPECT_EQ(walked.entries[1].aux, 5u);
  EXPECT_EQ(walked.entries[1].port, 6);
}

TEST_F(L2Walk, StaleEntriesAreRemovedUnseen) {
  put({{.vid = 10, .number = 1},
       {.vid = 30, .number = 2},
       {.vid = 0, .number = 3},
       {.vid = 20, .number = 4}});
  EXPECT_EQ(walk().entries.size(), 2u);
  EXPECT_EQ(held(), (std::vector<std::string>{"10 02:00:00:00:00:01", "20 02:00:00:00:00:04"}));
  const auto calls = swprobe::take();
  EXPECT_EQ(logged(calls).size(), 0u) << "they were dynamic";
  EXPECT_THAT(l2_test::names(calls),
              ElementsAre(kWalkScan, kVlan, kDelete, kWalkScan, kVlan, kWalkScan, kVlan, kWalkScan,
                          kVlan, kDelete, kWalkScan));
  EXPECT_EQ(calls[2].line(), "rtk_l2_addr_del(unit=0, vid=0, mac=[02 00 00 00 00 03]) = 0");
}

TEST_F(L2Walk, VlanThatIsDestroyedLaterIsStale) {
  put({{.vid = 20}});
  EXPECT_EQ(walk().entries.size(), 1u);
  ASSERT_EQ(rtk_vlan_destroy(0, 20), 0);
  EXPECT_EQ(walk().entries.size(), 0u);
  EXPECT_EQ(held().size(), 0u);
}

TEST_F(L2Walk, OnlyAStaleStaticEntryIsLogged) {
  for (uint32_t flags = 0; flags < 0x10; ++flags) {
    SCOPED_TRACE(flags);
    put({{.vid = 30, .number = 7, .flags = flags | 0x100}});
    walk();
    EXPECT_EQ(held().size(), 0u);
    const std::vector<std::string> expected = (flags & 0x0E) == 8
                                                  ? std::vector<std::string>{removed_line(7)}
                                                  : std::vector<std::string>{};
    EXPECT_EQ(logged(swprobe::take()), expected);
  }
}

TEST_F(L2Walk, StaleStaticEntriesAreTracedWhileTracingIsOn) {
  put({{.vid = 30, .number = 7, .flags = kStatic}, {.vid = 31, .number = 8, .flags = kStatic}});
  ASSERT_EQ(vchip_trace_set(1), 0);
  walk();
  const std::vector<vchip::TraceRecord> trace = vchip::platform().trace;
  ASSERT_EQ(trace.size(), 2u);
  EXPECT_EQ(l2_test::function_of(trace[0]), "rtk_l2_traverse");
  std::vector<std::string> messages = {trace[0].message, trace[1].message};
  EXPECT_THAT(messages, testing::UnorderedElementsAre(removed_line(7), removed_line(8)));
  EXPECT_EQ(logged(swprobe::take()).size(), 2u);
}

TEST_F(L2Walk, FailedPurgeStillHidesTheEntry) {
  put({{.vid = 30, .number = 7, .flags = kStatic}, {.vid = 10, .number = 1}});
  for (const int32_t result : {-1, 3}) {
    swprobe::clear_plan();
    chip_answers(kDelete, result);
    swprobe::forget();
    EXPECT_EQ(walk().entries.size(), 1u);
    EXPECT_THAT(logged(swprobe::take()), ElementsAre(removed_line(7)));
    EXPECT_EQ(held().size(), 2u);
  }
}

TEST_F(L2Walk, OnlyANegativeVlanAnswerIsStale) {
  put({{.vid = 30}});
  chip_answers(kVlan, 0x10004);
  EXPECT_EQ(walk().entries.size(), 1u);
  swprobe::clear_plan();
  put({{.vid = 10}});
  chip_answers(kVlan, -1);
  EXPECT_EQ(walk().entries.size(), 0u);
  EXPECT_EQ(held().size(), 0u);
}

int32_t remove_it(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  ++*static_cast<int *>(data);
  return rtk_l2_addr_del(0, entry->vid, entry->mac);
}

TEST_F(L2Walk, DeletingInsideDoesNotDisturbIt) {
  // Four of them share a bucket, so that neighbours are deleted too.
  std::vector<Entry> entries;
  for (uint8_t number = 0; number < 100; ++number)
    entries.push_back({.vid = number % 2 == 0 ? 10u : 20u, .number = number});
  put(entries);
  int calls = 0;
  EXPECT_EQ(rtk_l2_traverse(0, remove_it, &calls), 0);
  EXPECT_EQ(calls, 100);
  EXPECT_EQ(held().size(), 0u);
}

int32_t walk_again(uint32_t, chip_l2_ucast_entry *, void *data) {
  WalkSeen inner;
  rtk_l2_traverse(0, note, &inner);
  *static_cast<size_t *>(data) += inner.entries.size();
  return 0;
}

TEST_F(L2Walk, WalksDoNotShareTheirPlace) {
  put({{.number = 1}, {.number = 2}, {.number = 3}});
  size_t seen = 0;
  EXPECT_EQ(rtk_l2_traverse(0, walk_again, &seen), 0);
  EXPECT_EQ(seen, 9u);
}

TEST_F(L2Walk, NothingIsPrinted) {
  put({{.vid = 30, .flags = kStatic}});
  chip_answers(kDelete, -1);
  EXPECT_PRINTED(swctl_test::printed_by([&] { walk(); }), "", "");
}

TEST_F(L2Walk, TablePrintsEveryEntry) {
  put({{.vid = 20, .number = 0xAB, .port = 5, .trunk = 4, .flags = kStatic}, {.vid = 30}});
  const Entry violating = {.vid = 10, .number = 1, .port = 28, .flags = 0x20};
  put({violating});
  mark(violating, 1);
  for (const uint32_t value : {0u, 1u, 0xFFFFFFFFu}) {
    const auto print = [=] { EXPECT_EQ(user_mac_table_traverse(99, value), 0); };
    EXPECT_PRINTED(swctl_test::printed_by(print),
                   "MAC_ADDR=02:00:00:00:00:01, VLAN_TAG=0xa, PORT=28, TGID=0 FLAGS=0x00800020\n"
                   "MAC_ADDR=02:00:00:00:00:ab, VLAN_TAG=0x14, PORT=5, TGID=4 FLAGS=0x00000008\n",
                   "");
  }
}

}  // namespace
