// SPDX-License-Identifier: MIT
// Aging, learning limits and counts.
#include "l2/table.h"

namespace {

using swctl_test::chip_answers;
using vchip::LearnView;

constexpr const char *kEnable = "rtk_l2_portLimitLearningCntEnable_set";
constexpr const char *kSet = "rtk_l2_portLimitLearningCnt_set";
constexpr const char *kGet = "rtk_l2_portLimitLearningCnt_get";

user_l2_learn_limit_t limit_of(int32_t port, int32_t limit) {
  return {{11, 12}, port, {13, 14}, limit};
}

using L2Learn = l2_test::L2Test;

TEST_F(L2Learn, AgingTimePassesThrough) {
  EXPECT_EQ(user_mac_age_time_set(9, 123456), 0);
  EXPECT_CALLS("rtk_l2_aging_set(unit=0, time=123456) = 0");
  EXPECT_EQ(vchip::aging(0), 123456u);
  EXPECT_EQ(vchip::aging(1), 300u);
  uint32_t time = 0;
  EXPECT_EQ(user_mac_age_time_get(9, &time), 0);
  EXPECT_EQ(time, 123456u);
  EXPECT_CALLS("rtk_l2_aging_get(unit=0, time=>123456) = 0");
}

TEST_F(L2Learn, AgingReturnsAnyResultAndLeavesTheOutputToTheSdk) {
  for (const int32_t result : {-1, 5, INT32_MIN}) {
    swprobe::clear_plan();
    chip_answers("rtk_l2_aging_set", result);
    chip_answers("rtk_l2_aging_get", result);
    uint32_t time = 7;
    EXPECT_EQ(user_mac_age_time_set(0, 0xFFFFFFFF), result);
    EXPECT_EQ(user_mac_age_time_get(0, &time), result);
    EXPECT_EQ(time, 7u);
  }
}

TEST_F(L2Learn, LimitIsEnabledAndSet) {
  EXPECT_EQ(user_mac_learn_limit_set(9, limit_of(5, 100)), 0);
  EXPECT_CALLS("rtk_l2_portLimitLearningCntEnable_set(unit=0, port=5, enable=1) = 0",
               "rtk_l2_portLimitLearningCnt_set(unit=0, port=5, limit=100) = 0");
  EXPECT_EQ(vchip::learning(0, 5), (LearnView{true, 100, 0}));
  EXPECT_EQ(vchip::learning(0, 4), (LearnView{false, 8191, 0}));
  EXPECT_EQ(vchip::learning(1, 5), (LearnView{false, 8191, 0}));
}

TEST_F(L2Learn, OnlyTheSecondResultCounts) {
  for (const int32_t result : {-4, 0, 4}) {
    swprobe::clear_plan();
    chip_answers(kEnable, -1);
    chip_answers(kSet, result);
    swprobe::forget();
    EXPECT_EQ(user_mac_learn_limit_set(0, limit_of(5, 1)), result);
    EXPECT_EQ(swprobe::take().size(), 2u);
  }
}

TEST_F(L2Learn, SetterPassesOverNegativePortsAndPort28) {
  for (const int32_t port : {-1, INT32_MIN, 28}) {
    EXPECT_EQ(user_mac_learn_limit_set(0, limit_of(port, 1)), 0);
    EXPECT_NO_CALLS();
  }
  EXPECT_EQ(user_mac_learn_limit_set(0, limit_of(0, 1)), 0);
  EXPECT_EQ(user_mac_learn_limit_set(0, limit_of(27, 1)), 0);
  EXPECT_EQ(user_mac_learn_limit_set(0, limit_of(29, 1)), VCHIP_E_PORT);
  EXPECT_EQ(swprobe::take().size(), 6u);
}

TEST_F(L2Learn, LimitOfAnySignGoesThrough) {
  EXPECT_EQ(user_mac_learn_limit_set(0, limit_of(5, -3)), VCHIP_E_VALUE);
  EXPECT_EQ(swprobe::take().at(1).in("limit"), -3);
}

TEST_F(L2Learn, GetterWritesTheLimitAlone) {
  ASSERT_EQ(rtk_l2_portLimitLearningCnt_set(0, 5, 77), 0);
  swprobe::forget();
  user_l2_learn_limit_t record = limit_of(5, -1);
  EXPECT_EQ(user_mac_learn_limit_get(9, &record), 0);
  EXPECT_CALLS("rtk_l2_portLimitLearningCnt_get(unit=0, port=5, limit=>77) = 0");
  const user_l2_learn_limit_t expected = limit_of(5, 77);
  EXPECT_EQ(memcmp(&record, &expected, sizeof record), 0);
}

TEST_F(L2Learn, GetterWritesAfterAFailureToo) {
  user_l2_learn_limit_t record = limit_of(29, -1);
  EXPECT_EQ(user_mac_learn_limit_get(0, &record), VCHIP_E_PORT);
  EXPECT_EQ(record.limit, 0);
  for (const int32_t result : {-4, 4}) {
    swprobe::clear_plan();
    chip_answers(kGet, result, {{"limit", 55}});
    EXPECT_EQ(user_mac_learn_limit_get(0, &record), result);
    EXPECT_EQ(record.limit, 55);
  }
}

TEST_F(L2Learn, GetterKnowsPort28AndRefusesNegativePorts) {
  user_l2_learn_limit_t record = limit_of(28, -1);
  EXPECT_EQ(user_mac_learn_limit_get(0, &record), 0);
  EXPECT_EQ(record.limit, 8191);
  for (const int32_t port : {-1, INT32_MIN}) {
    record = limit_of(port, 42);
    EXPECT_EQ(user_mac_learn_limit_get(0, &record), -1);
    EXPECT_EQ(record.limit, 42);
  }
  EXPECT_NO_CALLS();
}

TEST_F(L2Learn, CountPassesThrough) {
  for (uint8_t number = 0; number < 3; ++number) put({{.number = number, .port = 5}});
  put({{.number = 9, .port = 5, .flags = 0x08}});
  uint32_t count = 7;
  EXPECT_EQ(user_mac_learn_count_get_by_port(5, &count), 0);
  EXPECT_EQ(count, 3u);
  EXPECT_CALLS("rtk_l2_portLearningCnt_get(unit=0, port=5, count=>3) = 0");
  for (const int32_t result : {-4, 4}) {
    swprobe::clear_plan();
    chip_answers("rtk_l2_portLearningCnt_get", result);
    EXPECT_EQ(user_mac_learn_count_get_by_port(-1, &count), result);
    EXPECT_EQ(count, 3u);
  }
}

TEST_F(L2Learn, LimitHoldsInTheChip) {
  ASSERT_EQ(user_mac_learn_limit_set(0, limit_of(5, 2)), 0);
  for (uint8_t number = 1; number <= 3; ++number) {
    vchip_station_t station = {10, {2, 0, 0, 0, 0, number}, 0};
    EXPECT_EQ(vchip_station_learn(0, 5, &station), number <= 2 ? 0 : VCHIP_E_L2_LIMIT);
  }
  EXPECT_EQ(vchip::learning(0, 5), (LearnView{true, 2, 2}));
}

TEST_F(L2Learn, NothingIsPrinted) {
  const auto all = [] {
    user_l2_learn_limit_t record = limit_of(-1, 1);
    uint32_t word = 0;
    user_mac_learn_limit_set(0, limit_of(29, 1));
    user_mac_learn_limit_get(0, &record);
    user_mac_learn_count_get_by_port(29, &word);
    user_mac_age_time_set(0, 0xFFFFFFFF);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
