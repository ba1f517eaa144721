// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;

constexpr const char *kGet = "rtk_stat_port_get";

struct Kind {
  int32_t kind;
  std::vector<uint32_t> counters;
};
const Kind kKinds[] = {{0, {1, 2, 3}}, {1, {45}}, {2, {34}}, {3, {21, 34, 45, 41}}};

class Counters : public swctl_test::LibraryTest {
 protected:
  static uint64_t read(int32_t kind, int32_t expected = 0, uint32_t unit = 1) {
    user_counter_t value = {0xDEAD, 0xBEEF};
    EXPECT_EQ(user_stat_port_get(0, unit, 5, kind, &value), expected);
    return uint64_t{value.high} << 32 | value.low;
  }
};

TEST_F(Counters, OneCounterThroughTheCallersAddress) {
  ASSERT_EQ(vchip_counter_set(1, 5, 17, 0x1122334455667788), 0);
  user_counter_t value = {7, 7};
  EXPECT_EQ(user_port_packetstat_get(0, 1, 5, 17, &value), 0);
  EXPECT_EQ(value.high, 0x11223344u);
  EXPECT_EQ(value.low, 0x55667788u);
  EXPECT_CALLS(
      "rtk_stat_port_get(unit=1, port=5, counter=17, value.high=>287454020, "
      "value.low=>1432778632) = 0");
  EXPECT_EQ(user_port_packetstat_get(0, 0, 5, 17, &value), 0);
  EXPECT_EQ(value.low, 0u);
}

TEST_F(Counters, ClearReachesTheChipAndNeverFails) {
  ASSERT_EQ(vchip_counter_set(1, 5, 17, 9), 0);
  ASSERT_EQ(vchip_counter_set(1, 6, 17, 9), 0);
  EXPECT_EQ(user_port_packetstat_clear(0, 1, 5), 0);
  EXPECT_CALLS("rtk_stat_port_reset(unit=1, port=5) = 0");
  EXPECT_EQ(vchip::counters(1, 5).at(17), 0u);
  EXPECT_EQ(vchip::counters(1, 6).at(17), 9u);
  for (int64_t result : {-5, 5}) {
    chip_answers("rtk_stat_port_reset", result);
    EXPECT_EQ(user_port_packetstat_clear(77, 1, 5), 0);
  }
}

TEST_F(Counters, EveryKindAsksForItsCountersInOrder) {
  for (const Kind &kind : kKinds) {
    swprobe::forget();
    read(kind.kind);
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), kind.counters.size());
    for (size_t i = 0; i < calls.size(); ++i) {
      EXPECT_EQ(calls[i].name, kGet);
      EXPECT_EQ(calls[i].in("unit"), 1);
      EXPECT_EQ(calls[i].in("port"), 5);
      EXPECT_EQ(calls[i].in("counter"), kind.counters[i]);
    }
  }
}

TEST_F(Counters, EveryKindIsTheSumOfItsCounters) {
  for (uint32_t counter = 0; counter < CHIP_PORT_COUNTERS; ++counter)
    ASSERT_EQ(vchip_counter_set(1, 5, counter, uint64_t{1} << counter), 0);
  for (const Kind &kind : kKinds) {
    uint64_t sum = 0;
    for (const uint32_t counter : kind.counters) sum += uint64_t{1} << counter;
    EXPECT_EQ(read(kind.kind), sum) << kind.kind;
    EXPECT_EQ(read(kind.kind, 0, 0), 0u) << kind.kind;
  }
}

TEST_F(Counters, LowWordsCarryIntoTheHighOne) {
  const uint32_t counters[] = {21, 34, 45, 41};
  for (const uint32_t counter : counters)
    ASSERT_EQ(vchip_counter_set(1, 5, counter, 0xFFFFFFFF), 0);
  EXPECT_EQ(read(3), 0x3FFFFFFFCu);
  ASSERT_EQ(vchip_counter_set(1, 5, 1, 0x1FFFFFFFF), 0);
  ASSERT_EQ(vchip_counter_set(1, 5, 2, 0x300000001), 0);
  EXPECT_EQ(read(0), 0x500000000u);
}

TEST_F(Counters, SumsWrapAroundAtSixtyFourBits) {
  ASSERT_EQ(vchip_counter_set(1, 5, 1, UINT64_MAX), 0);
  ASSERT_EQ(vchip_counter_set(1, 5, 3, 5), 0);
  EXPECT_EQ(read(0), 4u);
  ASSERT_EQ(vchip_counter_add(1, 5, 1, 2), 0);
  EXPECT_EQ(read(0), 6u) << "the counter itself has wrapped";
}

TEST_F(Counters, AnyOtherKindIsZeroWithoutACall) {
  for (int32_t kind : {4, 7, -1, INT32_MIN, INT32_MAX, 256, 259}) {
    EXPECT_EQ(read(kind), 0u) << kind;
  }
  EXPECT_NO_CALLS();
}

TEST_F(Counters, KindsOfOneCounterReturnItsResult) {
  for (int32_t kind : {1, 2}) {
    for (int64_t result : {-5, 5}) {
      swprobe::clear_plan();
      chip_answers(kGet, result, {{"value.low", 3}});
      EXPECT_EQ(read(kind, static_cast<int32_t>(result)), 3u);
      chip_answers(kGet, result);
      EXPECT_EQ(read(kind, static_cast<int32_t>(result)), 0u) << "cleared first";
    }
  }
}

TEST_F(Counters, SummedKindsReturnZeroWhateverTheResults) {
  for (int32_t kind : {0, 3}) {
    for (int64_t result : {-5, 5}) {
      swprobe::clear_plan();
      chip_answers(kGet, result, {{"value.low", 3}});
      EXPECT_EQ(read(kind), kind == 0 ? 9u : 12u);
    }
  }
}

TEST_F(Counters, AFailedReadCountsTheOneBeforeItAgain) {
  const uint32_t values[] = {1, 10, 100, 1000};
  for (const Kind &kind : kKinds) {
    if (kind.counters.size() == 1) continue;
    for (size_t i = 0; i < kind.counters.size(); ++i)
      ASSERT_EQ(vchip_counter_set(1, 5, kind.counters[i], values[i]), 0);
    for (size_t failing = 0; failing < kind.counters.size(); ++failing) {
      swprobe::clear_plan();
      swprobe::answer(kGet, failing + 1, {-5, {}});
      uint64_t sum = 0;
      for (size_t i = 0; i < kind.counters.size(); ++i) {
        if (i != failing)
          sum += values[i];
        else if (i > 0)
          sum += values[i - 1];
      }
      EXPECT_EQ(read(kind.kind), sum) << kind.kind << " failing " << failing;
    }
  }
}

TEST_F(Counters, AllAtOnceThroughTheCallersAddress) {
  for (uint32_t counter = 0; counter < CHIP_PORT_COUNTERS; ++counter)
    ASSERT_EQ(vchip_counter_set(1, 5, counter, uint64_t{counter} << 32 | 7), 0);
  swprobe::forget();
  chip_port_counters_t counters = {};
  EXPECT_EQ(user_stat_port_getAll(0, 1, 5, &counters), 0);
  for (uint32_t counter = 0; counter < CHIP_PORT_COUNTERS; ++counter) {
    EXPECT_EQ(counters.value[counter].high, counter);
    EXPECT_EQ(counters.value[counter].low, 7u);
  }
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].out("counters.value[90]"), 45) << "pairs of words, high first";
}

TEST_F(Counters, LeadingArgumentIsIgnored) {
  ASSERT_EQ(vchip_counter_set(1, 5, 45, 6), 0);
  for (uint32_t lead : {1u, 0xFFFFFFFFu}) {
    user_counter_t value = {};
    EXPECT_EQ(user_stat_port_get(lead, 1, 5, 1, &value), 0);
    EXPECT_EQ(value.low, 6u);
  }
}

}  // namespace
