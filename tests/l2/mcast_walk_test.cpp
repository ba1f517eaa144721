// SPDX-License-Identifier: MIT
// Walks and questions over the multicast entries.
#include "l2/table.h"

namespace {

using swctl_test::chip_answers;
using testing::Each;
using testing::ElementsAre;

constexpr const char *kScan = "rtk_l2_nextValidMcastAddr_get";

class L2McastWalk : public l2_test::L2Test {
 protected:
  static void put_groups(uint32_t unit, const std::vector<uint16_t> &vlans) {
    chip_l2_mcast_entry entry = {0, {1, 0, 0x5e, 0, 0, 0}, 1, 0, {0, 0, 0}};
    for (const uint16_t vid : vlans) {
      entry.vid = vid;
      ++entry.mac[5];
      ASSERT_EQ(rtk_l2_mcastAddr_add(unit, &entry), 0);
    }
    swprobe::forget();
  }
};

struct Walked {
  std::vector<uint32_t> units;
  std::vector<uint32_t> vlans;
};

int32_t note(uint32_t unit, chip_l2_mcast_entry *entry, void *data) {
  Walked &walked = *static_cast<Walked *>(data);
  walked.units.push_back(unit);
  walked.vlans.push_back(entry->vid);
  return -1;
}

TEST_F(L2McastWalk, GoesThroughTheCallersUnitWhateverTheCallbackAnswers) {
  put_groups(1, {30, 10, 4000});
  put_groups(0, {7});
  Walked walked;
  EXPECT_EQ(rtk_l2_mcast_traverse(1, note, &walked), 0);
  EXPECT_THAT(walked.vlans, ElementsAre(30u, 10u, 4000u));
  EXPECT_THAT(walked.units, Each(1u));
  const auto calls = swprobe::take();
  EXPECT_THAT(l2_test::names(calls), ElementsAre(kScan, kScan, kScan, kScan))
      << "the VLANs are not looked at";
  EXPECT_EQ(calls[0].in("index"), -1);
  for (const swprobe::Call &call : calls) EXPECT_EQ(call.in("unit"), 1);
  EXPECT_EQ(vchip::groups(1).size(), 3u);
}

TEST_F(L2McastWalk, AnyNonZeroScanResultIsTheEnd) {
  put_groups(0, {1, 2, 3});
  for (const int32_t result : {-1, 1}) {
    swprobe::clear_plan();
    swprobe::answer(kScan, 3, {.result = result, .outputs = {}});
    Walked walked;
    EXPECT_EQ(rtk_l2_mcast_traverse(0, note, &walked), 0);
    EXPECT_EQ(walked.vlans.size(), 2u);
  }
}

TEST_F(L2McastWalk, EmptyTableNeverCallsBack) {
  Walked walked;
  EXPECT_EQ(rtk_l2_mcast_traverse(0, note, &walked), 0);
  EXPECT_EQ(rtk_l2_mcast_traverse(VCHIP_UNITS, note, &walked), 0);
  EXPECT_EQ(walked.vlans.size(), 0u);
}

int32_t keep_entry(uint32_t, chip_l2_mcast_entry *entry, void *data) {
  static_cast<std::vector<chip_l2_mcast_entry> *>(data)->push_back(*entry);
  return 0;
}

TEST_F(L2McastWalk, TheEntryIsClearedOnce) {
  swprobe::answer(kScan, 1, {.result = 0, .outputs = {{"entry.fwdIndex", 5}}});
  swprobe::answer(kScan, 2, {.result = 0, .outputs = {{"entry.portmask", 6}}});
  std::vector<chip_l2_mcast_entry> entries;
  EXPECT_EQ(rtk_l2_mcast_traverse(0, keep_entry, &entries), 0);
  ASSERT_EQ(entries.size(), 2u);
  const chip_l2_mcast_entry first = {0, {0, 0, 0, 0, 0, 0}, 0, 5, {0, 0, 0}};
  const chip_l2_mcast_entry second = {0, {0, 0, 0, 0, 0, 0}, 6, 5, {0, 0, 0}};
  EXPECT_EQ(memcmp(&entries[0], &first, sizeof first), 0);
  EXPECT_EQ(memcmp(&entries[1], &second, sizeof second), 0);
}

TEST_F(L2McastWalk, PresenceIsMarkedAndNeverCleared) {
  put_groups(1, {1, 4094, 10, 10});
  put_groups(0, {5});
  std::vector<int32_t> present(4094, 0);
  present[19] = 7;
  EXPECT_EQ(user_is_mcast_addr_exist_vlan_is(1, present.data()), 0);
  std::vector<int32_t> expected(4094, 0);
  expected[0] = expected[9] = expected[4093] = 1;
  expected[19] = 7;
  EXPECT_EQ(present, expected);
  EXPECT_EQ(swprobe::take().size(), 5u);
}

TEST_F(L2McastWalk, PresenceOfVlanZeroIsTheWordInFront) {
  put_groups(0, {0});
  int32_t room[3] = {0, 0, 0};
  EXPECT_EQ(user_is_mcast_addr_exist_vlan_is(0, &room[1]), 0);
  EXPECT_THAT(room, ElementsAre(1, 0, 0));
}

TEST_F(L2McastWalk, PresenceWithoutAnArrayIsRefused) {
  EXPECT_EQ(user_is_mcast_addr_exist_vlan_is(0, nullptr), -1);
  EXPECT_NO_CALLS();
}

TEST_F(L2McastWalk, PresenceEndsAtAnyNonZeroScanResult) {
  put_groups(0, {1, 2});
  for (const int32_t result : {-1, 1}) {
    swprobe::clear_plan();
    swprobe::answer(kScan, 2, {.result = result, .outputs = {{"entry.vid", 3}}});
    int32_t present[3] = {};
    EXPECT_EQ(user_is_mcast_addr_exist_vlan_is(0, present), 0);
    EXPECT_THAT(present, ElementsAre(1, 0, 0));
  }
}

TEST_F(L2McastWalk, FirstVlanInARange) {
  put_groups(1, {300, 20, 10});
  EXPECT_EQ(user_is_mcast_addr_exist_by_vlan(1, 1, 4094), 300);
  EXPECT_EQ(user_is_mcast_addr_exist_by_vlan(1, 1, 299), 20);
  EXPECT_EQ(user_is_mcast_addr_exist_by_vlan(1, 10, 19), 10);
  EXPECT_EQ(user_is_mcast_addr_exist_by_vlan(1, 20, 20), 20);
  EXPECT_EQ(user_is_mcast_addr_exist_by_vlan(1, 21, 299), 0);
  EXPECT_EQ(user_is_mcast_addr_exist_by_vlan(1, 20, 10), 0) << "low above high";
  EXPECT_EQ(user_is_mcast_addr_exist_by_vlan(0, 1, 4094), 0) << "the other unit";
}

TEST_F(L2McastWalk, RangeIsTakenAsSixteenBits) {
  put_groups(0, {20});
  EXPECT_EQ(user_is_mcast_addr_exist_by_vlan(0, 0x10014, 0x20014), 20);
  EXPECT_EQ(user_is_mcast_addr_exist_by_vlan(0, 0, 0x8000), 20) << "compared without a sign";
  EXPECT_EQ(user_is_mcast_addr_exist_by_vlan(0, 0, 0x10000), 0);
}

TEST_F(L2McastWalk, RangeStopsAskingAtTheFirstMatchAndAtAFailure) {
  put_groups(0, {20, 30});
  EXPECT_EQ(user_is_mcast_addr_exist_by_vlan(0, 1, 100), 20);
  EXPECT_EQ(swprobe::take().size(), 1u);
  for (const int32_t result : {-1, 1}) {
    swprobe::clear_plan();
    chip_answers(kScan, result, {{"entry.vid", 30}});
    EXPECT_EQ(user_is_mcast_addr_exist_by_vlan(0, 1, 100), 0);
  }
}

}  // namespace
