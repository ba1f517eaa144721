// SPDX-License-Identifier: MIT
// Unicast addresses: calls, what happens to the chip from outside, and what the chip then holds.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <cstring>
#include <gmock/gmock.h>

#include "private_chip.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;
using vchip::AddressView;
using vchip::LearnView;

chip_l2_ucast_entry entry_of(uint8_t number, uint32_t flags = 0, int32_t port = 3,
                             uint32_t vid = 10, int32_t trunk = 0) {
  return {vid, {2, 0, 0, 0, 0, number}, {0, 0}, port, trunk, flags, 0, 0, {0, 0, 0, 0}, 0};
}

class L2 : public vchip_test::PrivateChip {
 protected:
  static void put(const chip_l2_ucast_entry &entry, uint32_t unit = 0) {
    ASSERT_EQ(rtk_l2_addr_add(unit, &entry), 0);
  }
  static int32_t learn(uint8_t number, int32_t port, uint32_t vid = 10, int32_t trunk = 0) {
    const vchip_station_t station = {vid, {2, 0, 0, 0, 0, number}, trunk};
    return vchip_station_learn(0, port, &station);
  }
  static std::vector<std::string> numbers(uint32_t unit = 0) {
    std::vector<std::string> all;
    for (const AddressView &view : vchip::addresses(unit)) all.push_back(view.mac.substr(16));
    return all;
  }
  static int32_t flush(const chip_l2_flush_request &request) {
    return rtk_l2_ucastAddr_flush(0, &request);
  }
};

TEST_F(L2, PowerOn) {
  for (const uint32_t unit : {0u, 1u}) {
    EXPECT_EQ(vchip::addresses(unit).size(), 0u);
    EXPECT_EQ(vchip::aging(unit), 300u);
    for (int32_t port = 0; port < VCHIP_PORTS; ++port)
      EXPECT_EQ(vchip::learning(unit, port), (LearnView{false, 8191, 0}));
  }
}

TEST_F(L2, AddKeepsWhatTheCallerGaveAndNotTheChipsOwnWords) {
  chip_l2_ucast_entry entry = entry_of(1, 0xFF00FF20, 28, 4095, 31);
  entry.state = 7;
  entry.aux = 8;
  entry.rest[0] = 9;
  entry.extra = 11;
  put(entry, 1);
  EXPECT_THAT(vchip::addresses(1), ElementsAre(AddressView{16248, 4095, "02:00:00:00:00:01", 28, 31,
                                                           0xFF00FF20, 0, 8, 11, 0}));
  EXPECT_EQ(vchip::addresses(0).size(), 0u);
  chip_l2_ucast_entry read = entry_of(1, 0, 0, 4095);
  EXPECT_EQ(rtk_l2_addr_get(1, &read), 0);
  entry.state = 0;
  entry.rest[0] = 0;
  EXPECT_EQ(memcmp(&read, &entry, sizeof read), 0);
}

TEST_F(L2, AddRefusesWhatNoEntryCanHold) {
  const auto refused = [](const chip_l2_ucast_entry &entry) { return rtk_l2_addr_add(0, &entry); };
  EXPECT_EQ(refused(entry_of(1, 0, -1)), VCHIP_E_PORT);
  EXPECT_EQ(refused(entry_of(1, 0, 29)), VCHIP_E_PORT);
  EXPECT_EQ(refused(entry_of(1, 0, 3, 4096)), VCHIP_E_VALUE);
  EXPECT_EQ(refused(entry_of(1, 0, 3, 10, 32)), VCHIP_E_VALUE);
  EXPECT_EQ(refused(entry_of(1, 0, 3, 10, -1)), VCHIP_E_VALUE);
  chip_l2_ucast_entry group = entry_of(1);
  group.mac[0] = 1;
  EXPECT_EQ(refused(group), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_l2_addr_get(0, &group), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_l2_addr_del(0, 10, group.mac), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_l2_addr_del(0, 4096, entry_of(1).mac), VCHIP_E_VALUE);
  EXPECT_EQ(vchip::addresses(0).size(), 0u);
}

TEST_F(L2, WhatIsNotThere) {
  put(entry_of(1));
  chip_l2_ucast_entry key = entry_of(1, 0, 3, 20);
  const chip_l2_ucast_entry before = key;
  EXPECT_EQ(rtk_l2_addr_get(0, &key), VCHIP_E_L2_ENTRY);
  EXPECT_EQ(memcmp(&key, &before, sizeof key), 0);
  EXPECT_EQ(rtk_l2_addr_del(0, 20, key.mac), VCHIP_E_L2_ENTRY);
  EXPECT_EQ(rtk_l2_addr_del(1, 10, key.mac), VCHIP_E_L2_ENTRY);
  EXPECT_EQ(vchip::addresses(0).size(), 1u);
}

TEST_F(L2, ScanGoesOnBehindItsIndex) {
  put(entry_of(1));
  put(entry_of(2, 8));
  put(entry_of(3));
  for (const uint32_t with_static : {1u, 0u}) {
    int32_t index = -1;
    chip_l2_ucast_entry entry = {};
    std::vector<int> found;
    while (rtk_l2_nextValidAddr_get(0, &index, with_static, &entry) == 0)
      found.push_back(entry.mac[5]);
    if (with_static == 1) {
      EXPECT_THAT(found, UnorderedElementsAre(1, 2, 3));
    } else {
      EXPECT_THAT(found, UnorderedElementsAre(1, 3));
    }
    const chip_l2_ucast_entry last = entry;
    const int32_t end = index;
    EXPECT_EQ(rtk_l2_nextValidAddr_get(0, &index, with_static, &entry), VCHIP_E_L2_ENTRY);
    EXPECT_EQ(index, end);
    EXPECT_EQ(memcmp(&entry, &last, sizeof entry), 0);
  }
  for (int32_t bad : {-2, 16384, INT32_MAX, INT32_MIN}) {
    chip_l2_ucast_entry entry = {};
    EXPECT_EQ(rtk_l2_nextValidAddr_get(0, &bad, 1, &entry), VCHIP_E_INDEX);
  }
  int32_t last = 16383;
  chip_l2_ucast_entry entry = {};
  EXPECT_EQ(rtk_l2_nextValidAddr_get(0, &last, 1, &entry), VCHIP_E_L2_ENTRY);
  EXPECT_EQ(rtk_l2_nextValidAddr_get(0, &last, 2, &entry), VCHIP_E_VALUE);
}

TEST_F(L2, FlushMatchesEveryField) {
  // reserved, byVlan, vid, byInterface, isPort, number, reserved2, static
  const std::pair<chip_l2_flush_request, std::vector<std::string>> cases[] = {
      {{0, 0, 0, 0, 0, 0, 0, 0}, {"5"}},
      {{0, 0, 0, 0, 1, 7, 0, 0}, {"5"}},
      {{0, 0, 0, 0, 0, 0, 0, 1}, {}},
      {{0, 1, 10, 0, 0, 0, 0, 0}, {"2", "4", "5"}},
      {{0, 1, 10, 0, 0, 0, 0, 1}, {"2", "4"}},
      {{0, 0, 0, 1, 1, 3, 0, 0}, {"3", "4", "5"}},
      {{0, 0, 0, 1, 0, 3, 0, 0}, {"1", "2", "5"}},
      {{0, 0, 20, 1, 0, 3, 0, 0}, {"1", "2", "5"}},
      {{0, 1, 20, 1, 1, 3, 0, 0}, {"1", "3", "4", "5"}},
      {{0, 1, 20, 1, 0, 3, 0, 1}, {"1", "2", "3", "5"}},
      {{0, 1, 30, 0, 0, 0, 0, 1}, {"1", "2", "3", "4", "5"}},
  };
  for (const auto &[request, remaining] : cases) {
    ASSERT_EQ(vchip_reset(), 0);
    put(entry_of(1, 0, 3, 10, 5));
    put(entry_of(2, 0, 3, 20, 5));
    put(entry_of(3, 0, 5, 10, 3));
    put(entry_of(4, 0, 5, 20, 3));
    put(entry_of(5, 0x08, 3, 10, 5));
    EXPECT_EQ(flush(request), 0);
    EXPECT_THAT(numbers(), testing::UnorderedElementsAreArray(remaining))
        << request.byVlan << request.byInterface << request.interfaceIsPort;
  }
}

TEST_F(L2, FlushRefusesWordsThatMeanNothing) {
  put(entry_of(1));
  EXPECT_EQ(flush({1, 0, 0, 0, 0, 0, 0, 0}), VCHIP_E_VALUE);
  EXPECT_EQ(flush({0, 2, 0, 0, 0, 0, 0, 0}), VCHIP_E_VALUE);
  EXPECT_EQ(flush({0, 1, 4096, 0, 0, 0, 0, 0}), VCHIP_E_VALUE);
  EXPECT_EQ(flush({0, 0, 0, 2, 0, 0, 0, 0}), VCHIP_E_VALUE);
  EXPECT_EQ(flush({0, 0, 0, 1, 2, 0, 0, 0}), VCHIP_E_VALUE);
  EXPECT_EQ(flush({0, 0, 0, 1, 0, 32, 0, 0}), VCHIP_E_VALUE);
  EXPECT_EQ(flush({0, 0, 0, 1, 1, 29, 0, 0}), VCHIP_E_PORT);
  EXPECT_EQ(flush({0, 0, 0, 0, 0, 0, 1, 0}), VCHIP_E_VALUE);
  EXPECT_EQ(flush({0, 0, 0, 0, 0, 0, 0, 2}), VCHIP_E_VALUE);
  EXPECT_EQ(numbers().size(), 1u);
}

TEST_F(L2, StationsAreLearnedMoveAndAge) {
  EXPECT_EQ(learn(1, 3), 0);
  EXPECT_EQ(learn(2, 28, 20, 5), 0);
  EXPECT_EQ(vchip_time_pass(0, 299), 0);
  EXPECT_EQ(numbers().size(), 2u);
  EXPECT_EQ(learn(1, 4), 0) << "it is seen again, at another port";
  EXPECT_EQ(vchip::learning(0, 3).learned, 0u);
  EXPECT_EQ(vchip::learning(0, 4).learned, 1u);
  EXPECT_EQ(vchip_time_pass(0, 1), 0);
  EXPECT_THAT(vchip::addresses(0),
              ElementsAre(AddressView{172, 10, "02:00:00:00:00:01", 4, 0, 0, 0, 0, 0, 1}));
  EXPECT_EQ(vchip::learning(0, 28).learned, 0u);
  EXPECT_EQ(vchip_time_pass(1, 1000), 0) << "the other unit's time";
  EXPECT_EQ(numbers().size(), 1u);
}

TEST_F(L2, OnlyLearnedEntriesAgeAndOnlyWithAnAgingTime) {
  put(entry_of(1, 0x08));
  put(entry_of(2, 0x0A));
  put(entry_of(3, 0x02));
  EXPECT_EQ(learn(4, 3), 0);
  ASSERT_EQ(rtk_l2_aging_set(0, 0), 0);
  EXPECT_EQ(vchip_time_pass(0, UINT32_MAX), 0);
  EXPECT_EQ(vchip_time_pass(0, UINT32_MAX), 0);
  EXPECT_EQ(numbers().size(), 4u);
  ASSERT_EQ(rtk_l2_aging_set(0, 1000000), 0);
  EXPECT_EQ(rtk_l2_aging_set(0, 1000001), VCHIP_E_VALUE);
  EXPECT_EQ(vchip_time_pass(0, 0), 0) << "they are old enough already";
  EXPECT_THAT(numbers(), UnorderedElementsAre("1", "2"));
}

TEST_F(L2, StaticEntryElsewhereIsAViolation) {
  put(entry_of(1, 0x08, 3, 10, 2));
  EXPECT_EQ(learn(1, 3, 10, 2), 0);
  EXPECT_EQ(vchip::addresses(0).at(0).state, 0u);
  EXPECT_EQ(learn(1, 4, 10, 2), 0);
  EXPECT_EQ(vchip::addresses(0).at(0).state, 1u);
  EXPECT_EQ(vchip::addresses(0).at(0).port, 3);
  EXPECT_EQ(vchip_l2_mark(0, 10, entry_of(1).mac, 6, 7), 0);
  EXPECT_EQ(learn(1, 3, 10, 3), 0) << "another trunk is elsewhere too";
  EXPECT_EQ(vchip::addresses(0).at(0).state, 7u);
  EXPECT_EQ(vchip::addresses(0).at(0).aux, 7u);
}

TEST_F(L2, LimitHoldsForLearningAlone) {
  ASSERT_EQ(rtk_l2_portLimitLearningCnt_set(0, 3, 1), 0);
  EXPECT_EQ(learn(1, 3), 0);
  EXPECT_EQ(learn(2, 3), 0) << "it is not enabled yet";
  ASSERT_EQ(rtk_l2_portLimitLearningCntEnable_set(0, 3, 1), 0);
  EXPECT_EQ(learn(3, 3), VCHIP_E_L2_LIMIT);
  EXPECT_EQ(learn(3, 4), 0);
  EXPECT_EQ(learn(3, 3), VCHIP_E_L2_LIMIT) << "moving there counts";
  EXPECT_EQ(learn(2, 3), 0) << "seen again";
  put(entry_of(5, 0, 3));
  EXPECT_EQ(vchip::learning(0, 3), (LearnView{true, 1, 3}));
  EXPECT_EQ(rtk_l2_portLimitLearningCnt_set(0, 3, 8192), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_l2_portLimitLearningCnt_set(0, 3, -1), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_l2_portLimitLearningCntEnable_set(0, 3, 2), VCHIP_E_VALUE);
}

TEST_F(L2, CountsFollowEveryChange) {
  put(entry_of(1));
  put(entry_of(1, 0, 4));
  put(entry_of(2, 0x08));
  EXPECT_EQ(vchip::learning(0, 3).learned, 0u);
  EXPECT_EQ(vchip::learning(0, 4).learned, 1u);
  put(entry_of(2, 0));
  EXPECT_EQ(vchip::learning(0, 3).learned, 1u);
  EXPECT_EQ(flush({0, 0, 0, 0, 0, 0, 0, 0}), 0);
  EXPECT_EQ(vchip::learning(0, 3).learned, 0u);
  EXPECT_EQ(vchip::learning(0, 4).learned, 0u);
}

TEST_F(L2, TheWorldIsCheckedToo) {
  vchip_station_t station = {10, {2, 0, 0, 0, 0, 1}, 0};
  EXPECT_EQ(vchip_station_learn(2, 3, &station), VCHIP_E_UNIT);
  EXPECT_EQ(vchip_station_learn(0, 29, &station), VCHIP_E_PORT);
  EXPECT_EQ(vchip_station_learn(0, 3, nullptr), VCHIP_E_NULL);
  station.vid = 4096;
  EXPECT_EQ(vchip_station_learn(0, 3, &station), VCHIP_E_VALUE);
  station = {10, {3, 0, 0, 0, 0, 1}, 0};
  EXPECT_EQ(vchip_station_learn(0, 3, &station), VCHIP_E_VALUE);
  station = {10, {2, 0, 0, 0, 0, 1}, 32};
  EXPECT_EQ(vchip_station_learn(0, 3, &station), VCHIP_E_VALUE);
  EXPECT_EQ(vchip_l2_mark(2, 10, station.mac, 1, 0), VCHIP_E_UNIT);
  EXPECT_EQ(vchip_l2_mark(0, 10, nullptr, 1, 0), VCHIP_E_NULL);
  EXPECT_EQ(vchip_l2_mark(0, 10, station.mac, 1, 0), VCHIP_E_L2_ENTRY);
  EXPECT_EQ(vchip_time_pass(2, 1), VCHIP_E_UNIT);
  EXPECT_EQ(numbers().size(), 0u);
}

TEST_F(L2, IsDumpedWithTheNamesOfItsFlags) {
  put(entry_of(1, 0x0080002A, 5, 20, 4));
  ASSERT_EQ(vchip_l2_mark(0, 20, entry_of(1).mac, 3, 9), 0);
  EXPECT_THAT(vchip::dump_json(-1),
              HasSubstr(R"("addresses":[{"index":212,"vid":20,"mac":"02:00:00:00:00:01","port":5,)"
                        R"("trunk":4,"flags":{"word":8388650,"names":["filter-source","static",)"
                        R"("violation-ignored","violation"]},"violation":true,"state":3,"aux":9,)"
                        R"("extra":0,"age":0}])"));
  EXPECT_THAT(vchip::dump_json(-1), HasSubstr(R"("l2":{"aging":300,"ports":[{"port":0,)"));
}

TEST_F(L2, ViewsRefuseWhatIsNotThere) {
  EXPECT_THROW(vchip::addresses(2), std::out_of_range);
  EXPECT_THROW(vchip::groups(2), std::out_of_range);
  EXPECT_THROW(vchip::aging(2), std::out_of_range);
  EXPECT_THROW(vchip::learning(2, 0), std::out_of_range);
  EXPECT_THROW(vchip::learning(0, 29), std::out_of_range);
}

TEST_F(L2, ResultsHaveSentences) {
  for (const int32_t result :
       {VCHIP_E_L2_ENTRY, VCHIP_E_L2_FULL, VCHIP_E_L2_EXISTS, VCHIP_E_L2_LIMIT})
    EXPECT_NE(vchip_result_text(result), nullptr) << result;
}

}  // namespace
