// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using swctl_test::Lines;

constexpr const char *kStormMode = "rtk_rate_stormControlRateMode_set";
constexpr const char *kBurst = "rtk_rate_stormControlBurstSize_set";

class StormControl : public swctl_test::LibraryTest {
 protected:
  void SetUp() override {
    LibraryTest::SetUp();
    // The library's own word outlives the chip's reset.
    ASSERT_EQ(user_rate_stormCountMode_set(0, 0, 0), 0);
    ASSERT_EQ(vchip_reset(), 0);
    swprobe::forget();
  }
  static vchip::StormView storm(uint32_t unit, uint32_t type) {
    return vchip::port_rates(unit, 5).storm.at(type);
  }
  static uint32_t read_rate(uint32_t unit = 1, uint32_t type = 2) {
    uint32_t rate = 7;
    uint32_t enable = 7;
    EXPECT_EQ(user_rate_bandwidth_get(0, unit, 5, type, &rate, &enable), 0);
    return rate;
  }
};

TEST_F(StormControl, EnableAlwaysSaysMinusOne) {
  EXPECT_EQ(user_rate_stormControlEnable_set(0, 1, 5, 3, 7), -1);
  EXPECT_TRUE(storm(1, 3).controlled);
  EXPECT_FALSE(storm(0, 3).controlled);
  EXPECT_EQ(user_rate_stormControlEnable_set(0, 1, 5, 3, 0), -1);
  EXPECT_FALSE(storm(1, 3).controlled);
  EXPECT_CALLS("rtk_rate_stormControlEnable_set(unit=1, port=5, type=3, enable=1) = 0",
               "rtk_rate_stormControlEnable_set(unit=1, port=5, type=3, enable=0) = 0");
  for (int64_t result : {-5, 5}) {
    swprobe::clear_plan();
    chip_answers("rtk_rate_stormControlEnable_set", result);
    EXPECT_EQ(user_rate_stormControlEnable_set(0, 1, 5, 3, 0x80000000), -1);
    EXPECT_EQ(swprobe::take().back().in("enable"), 1);
  }
}

TEST_F(StormControl, SelectionIsZeroOrOne) {
  for (const auto &[given, written] :
       std::vector<std::pair<uint32_t, uint32_t>>{{0, 0}, {1, 1}, {2, 1}, {0xFFFFFFFF, 1}}) {
    EXPECT_EQ(user_rate_stormsel_set(0, 1, 5, 4, given), 0);
    EXPECT_EQ(storm(1, 4).selection, written);
    uint32_t selection = 7;
    EXPECT_EQ(user_rate_stormsel_get(0, 1, 5, 4, &selection), 0);
    EXPECT_EQ(selection, written);
    const std::string digit = std::to_string(written);
    EXPECT_CALLS(
        "rtk_rate_stormControlTypeSel_set(unit=1, port=5, type=4, selection=" + digit + ") = 0",
        "rtk_rate_stormControlTypeSel_get(unit=1, port=5, type=4, selection=>" + digit + ") = 0");
  }
  EXPECT_EQ(storm(0, 4).selection, 0u);
}

TEST_F(StormControl, SelectionReturnsTheSdksResult) {
  for (int64_t result : {-5, 5}) {
    swprobe::clear_plan();
    chip_answers("rtk_rate_stormControlTypeSel_set", result);
    EXPECT_EQ(user_rate_stormsel_set(0, 1, 5, 4, 1), result);
  }
}

TEST_F(StormControl, TheFirstExceededTypeIsReported) {
  ASSERT_EQ(vchip_storm_exceed(1, 5, 3), 0);
  ASSERT_EQ(vchip_storm_exceed(1, 5, 1), 0);
  uint32_t flag = 7;
  uint32_t type = 9;
  EXPECT_EQ(user_rate_stormExceedFlag_get(0, 1, 5, &flag, &type), 0);
  EXPECT_EQ(flag, 1u);
  EXPECT_EQ(type, 1u);
  EXPECT_CALLS("rtk_rate_stormControlExceed_get(unit=1, port=5, type=0, exceeded=>0) = 0",
               "rtk_rate_stormControlExceed_get(unit=1, port=5, type=1, exceeded=>1) = 0");
}

TEST_F(StormControl, EverySetOfExceededTypes) {
  for (uint32_t set = 0; set < 32; ++set) {
    ASSERT_EQ(vchip_reset(), 0);
    for (uint32_t exceeded = 0; exceeded < 5; ++exceeded) {
      if ((set >> exceeded & 1) == 0) continue;
      ASSERT_EQ(vchip_storm_exceed(1, 5, exceeded), 0);
    }
    uint32_t flag = 7;
    uint32_t type = 9;
    EXPECT_EQ(user_rate_stormExceedFlag_get(0, 1, 5, &flag, &type), 0);
    EXPECT_EQ(flag, set == 0 ? 0u : 1u);
    uint32_t lowest = 0;
    while (set != 0 && (set >> lowest & 1) == 0) ++lowest;
    EXPECT_EQ(type, set == 0 ? 9u : lowest) << "untouched without a flag";
  }
}

TEST_F(StormControl, ExceededReadsThatFailAreNoEnd) {
  chip_answers("rtk_rate_stormControlExceed_get", -5);
  uint32_t flag = 7;
  uint32_t type = 9;
  EXPECT_EQ(user_rate_stormExceedFlag_get(0, 1, 5, &flag, &type), 0);
  EXPECT_EQ(flag, 0u);
  EXPECT_EQ(type, 9u);
  EXPECT_EQ(swprobe::take().size(), 5u);
  swprobe::Answer wrote = {-5, {{"exceeded", 0x80000000}}};
  swprobe::answer("rtk_rate_stormControlExceed_get", 3, wrote);
  EXPECT_EQ(user_rate_stormExceedFlag_get(0, 1, 5, &flag, &type), 0);
  EXPECT_EQ(flag, 1u);
  EXPECT_EQ(type, 2u) << "any word but 0, whatever the result";
}

TEST_F(StormControl, ResetTakesEveryFlagBack) {
  for (uint32_t type = 0; type < 5; ++type) ASSERT_EQ(vchip_storm_exceed(1, 5, type), 0);
  EXPECT_EQ(user_rate_stormExceedFlag_reset(0, 1, 5), 0);
  for (uint32_t type = 0; type < 5; ++type) EXPECT_FALSE(storm(1, type).exceeded);
  EXPECT_CALLS("rtk_rate_stormControlExceed_reset(unit=1, port=5, type=0) = 0",
               "rtk_rate_stormControlExceed_reset(unit=1, port=5, type=1) = 0",
               "rtk_rate_stormControlExceed_reset(unit=1, port=5, type=2) = 0",
               "rtk_rate_stormControlExceed_reset(unit=1, port=5, type=3) = 0",
               "rtk_rate_stormControlExceed_reset(unit=1, port=5, type=4) = 0");
  for (int64_t result : {-5, 5}) {
    swprobe::clear_plan();
    chip_answers("rtk_rate_stormControlExceed_reset", result);
    EXPECT_EQ(user_rate_stormExceedFlag_reset(0, 1, 5), 0);
    EXPECT_EQ(swprobe::take().size(), 5u);
  }
}

TEST_F(StormControl, ARateSwitchesItsControlOn) {
  EXPECT_EQ(user_rate_bandwidth_set(0, 1, 5, 2, 100), 0);
  EXPECT_CALLS("rtk_rate_stormControlEnable_set(unit=1, port=5, type=2, enable=1) = 0",
               "rtk_rate_stormControlRate_set(unit=1, port=5, type=2, rate=100) = 0");
  EXPECT_TRUE(storm(1, 2).controlled);
  EXPECT_EQ(storm(1, 2).rate, 100u);
  EXPECT_FALSE(storm(0, 2).controlled);
  EXPECT_FALSE(storm(1, 1).controlled);
}

TEST_F(StormControl, RateZeroSwitchesItsControlOff) {
  ASSERT_EQ(user_rate_bandwidth_set(0, 1, 5, 2, 100), 0);
  swprobe::forget();
  EXPECT_EQ(user_rate_bandwidth_set(0, 1, 5, 2, 0), 0);
  EXPECT_CALLS("rtk_rate_stormControlEnable_set(unit=1, port=5, type=2, enable=0) = 0",
               "rtk_rate_stormControlRate_set(unit=1, port=5, type=2, rate=0) = 0");
  EXPECT_FALSE(storm(1, 2).controlled);
}

TEST_F(StormControl, OnlyTheRateCallDecidesTheResult) {
  chip_answers("rtk_rate_stormControlEnable_set", -5);
  EXPECT_EQ(user_rate_bandwidth_set(0, 1, 5, 2, 100), 0);
  EXPECT_EQ(storm(1, 2).rate, 100u);
  for (int64_t result : {-6, 6}) {
    chip_answers("rtk_rate_stormControlRate_set", result);
    EXPECT_EQ(user_rate_bandwidth_set(0, 1, 5, 2, 100), result);
    EXPECT_EQ(user_rate_bandwidth_set(0, 1, 5, 2, 0), result);
  }
}

TEST_F(StormControl, RateIsReadThroughTheCallersAddresses) {
  ASSERT_EQ(user_rate_bandwidth_set(0, 1, 5, 2, 100), 0);
  swprobe::forget();
  uint32_t rate = 7;
  uint32_t enable = 7;
  EXPECT_EQ(user_rate_bandwidth_get(0, 1, 5, 2, &rate, &enable), 0);
  EXPECT_EQ(rate, 100u);
  EXPECT_EQ(enable, 1u);
  EXPECT_CALLS("rtk_rate_stormControlEnable_get(unit=1, port=5, type=2, enable=>1) = 0",
               "rtk_rate_stormControlRate_get(unit=1, port=5, type=2, rate=>100) = 0");
}

TEST_F(StormControl, AFailingEnableReadIsIgnored) {
  chip_answers("rtk_rate_stormControlEnable_get", -5);
  uint32_t rate = 7;
  uint32_t enable = 7;
  EXPECT_EQ(user_rate_bandwidth_get(0, 1, 5, 2, &rate, &enable), 0);
  EXPECT_EQ(enable, 7u);
  EXPECT_EQ(rate, 0xffffffu);
}

TEST_F(StormControl, CountModeOneReadsSixteenfold) {
  ASSERT_EQ(user_rate_stormCountMode_set(0, 0, 1), 0);
  ASSERT_EQ(user_rate_bandwidth_set(0, 1, 5, 2, 100), 0);
  EXPECT_EQ(storm(1, 2).rate, 100u) << "written as it is";
  EXPECT_EQ(read_rate(), 1600u) << "the word is one for all units";
  ASSERT_EQ(user_rate_stormCountMode_set(0, 0, 0), 0);
  EXPECT_EQ(read_rate(), 100u);
}

TEST_F(StormControl, SixteenfoldWhateverTheResult) {
  ASSERT_EQ(user_rate_stormCountMode_set(0, 0, 1), 0);
  for (int64_t result : {-5, 5}) {
    swprobe::clear_plan();
    chip_answers("rtk_rate_stormControlRate_get", result, {{"rate", 0x10000003}});
    uint32_t rate = 7;
    uint32_t enable = 7;
    EXPECT_EQ(user_rate_bandwidth_get(0, 1, 5, 2, &rate, &enable), result);
    EXPECT_EQ(rate, 0x30u) << "modulo 2^32";
  }
  swprobe::clear_plan();
  chip_answers("rtk_rate_stormControlRate_get", -5);
  uint32_t rate = 7;
  uint32_t enable = 7;
  EXPECT_EQ(user_rate_bandwidth_get(0, 1, 5, 2, &rate, &enable), -5);
  EXPECT_EQ(rate, 112u) << "the caller's own";
}

Lines count_mode_lines(uint32_t byte) {
  Lines lines = {"rtk_rate_stormControlRateMode_set(unit=1, mode=" + std::to_string(byte) +
                 ") = 0 !"};
  if (byte != 0) return lines;
  for (const char *type : {"2", "3", "4"}) {
    lines.push_back(std::string("rtk_rate_stormControlBurstSize_set(unit=1, type=") + type +
                    ", size=100) = 0");
  }
  return lines;
}

TEST_F(StormControl, EveryCountModeByteWithAnyBitsAbove) {
  chip_answers(kStormMode, 0);
  ASSERT_EQ(user_rate_bandwidth_set(0, 1, 5, 2, 100), 0);
  for (uint32_t byte = 0; byte < 256; ++byte) {
    for (uint32_t above : {0u, 0x100u, 0xFFFFFF00u}) {
      swprobe::forget();
      EXPECT_EQ(user_rate_stormCountMode_set(0, 1, byte | above), 0);
      EXPECT_EQ(swprobe::take_lines(), count_mode_lines(byte));
      EXPECT_EQ(read_rate(), byte == 1 ? 1600u : 100u) << byte;
    }
  }
}

TEST_F(StormControl, CountModeReachesTheChip) {
  ASSERT_EQ(user_rate_stormCountMode_set(0, 1, 1), 0);
  EXPECT_EQ(vchip::rates(1).storm_mode, 1u);
  EXPECT_EQ(vchip::rates(1).storm_burst, std::vector<uint32_t>(5, 0));
  ASSERT_EQ(user_rate_stormCountMode_set(0, 1, 256), 0);
  EXPECT_EQ(vchip::rates(1).storm_mode, 0u);
  EXPECT_EQ(vchip::rates(1).storm_burst, (std::vector<uint32_t>{0, 0, 100, 100, 100}));
  EXPECT_EQ(vchip::rates(0).storm_burst, std::vector<uint32_t>(5, 0));
}

TEST_F(StormControl, AnyResultButZeroLeavesTheModeAlone) {
  ASSERT_EQ(user_rate_bandwidth_set(0, 1, 5, 2, 100), 0);
  for (int64_t result : {-5, 5, 1, -1}) {
    swprobe::clear_plan();
    chip_answers(kStormMode, result);
    swprobe::forget();
    EXPECT_EQ(user_rate_stormCountMode_set(0, 1, 1), result);
    EXPECT_EQ(read_rate(), 100u);
    swprobe::forget();
    EXPECT_EQ(user_rate_stormCountMode_set(0, 1, 0), result);
    EXPECT_EQ(swprobe::take().size(), 1u) << "no bursts";
  }
  swprobe::clear_plan();
  ASSERT_EQ(user_rate_stormCountMode_set(0, 1, 1), 0);
  chip_answers(kStormMode, 5);
  EXPECT_EQ(user_rate_stormCountMode_set(0, 1, 0), 5);
  EXPECT_EQ(read_rate(), 1600u);
}

TEST_F(StormControl, RefusedBurstsAreIgnored) {
  for (int64_t result : {-5, 5}) {
    swprobe::clear_plan();
    chip_answers(kBurst, result);
    swprobe::forget();
    EXPECT_EQ(user_rate_stormCountMode_set(0, 1, 0), 0);
    EXPECT_EQ(swprobe::take().size(), 4u);
  }
}

TEST_F(StormControl, PortInitLeavesTheRememberedModeAlone) {
  ASSERT_EQ(user_rate_stormCountMode_set(0, 1, 1), 0);
  ASSERT_EQ(user_port_init(0, 1), 0);
  ASSERT_EQ(user_rate_bandwidth_set(0, 1, 5, 2, 100), 0);
  EXPECT_EQ(vchip::rates(1).storm_mode, 0u);
  EXPECT_EQ(read_rate(), 1600u);
}

TEST_F(StormControl, CountModeGetReadsTheChipIntoOneByte) {
  ASSERT_EQ(rtk_rate_stormControlRateMode_set(1, 0), 0);
  swprobe::forget();
  uint8_t bytes[3] = {7, 7, 7};
  EXPECT_EQ(user_rate_stormCountMode_get(0, 1, &bytes[1]), 0);
  EXPECT_EQ(bytes[0], 7);
  EXPECT_EQ(bytes[1], 0);
  EXPECT_EQ(bytes[2], 7);
  EXPECT_CALLS("rtk_rate_stormControlRateMode_get(unit=1, mode=>0) = 0");
  EXPECT_EQ(user_rate_stormCountMode_get(0, 0, &bytes[1]), 0);
  EXPECT_EQ(bytes[1], 1);
}

TEST_F(StormControl, CountModeGetStoresWhateverTheResult) {
  for (int64_t result : {-5, 5}) {
    swprobe::clear_plan();
    chip_answers("rtk_rate_stormControlRateMode_get", result, {{"mode", 0x1234}});
    uint8_t mode = 7;
    EXPECT_EQ(user_rate_stormCountMode_get(0, 1, &mode), result);
    EXPECT_EQ(mode, 0x34);
  }
  swprobe::clear_plan();
  chip_answers("rtk_rate_stormControlRateMode_get", -5);
  uint8_t mode = 7;
  EXPECT_EQ(user_rate_stormCountMode_get(0, 1, &mode), -5);
  EXPECT_EQ(mode, 0);
}

TEST_F(StormControl, CountModeGetTakesNoPartInTheRememberedMode) {
  ASSERT_EQ(user_rate_stormCountMode_set(0, 1, 0), 0);
  chip_answers("rtk_rate_stormControlRateMode_get", 0, {{"mode", 1}});
  uint8_t mode = 7;
  EXPECT_EQ(user_rate_stormCountMode_get(0, 1, &mode), 0);
  ASSERT_EQ(user_rate_bandwidth_set(0, 1, 5, 2, 100), 0);
  EXPECT_EQ(read_rate(), 100u);
}

TEST_F(StormControl, LeadingArgumentIsIgnored) {
  for (uint32_t lead : {1u, 0xFFFFFFFFu}) {
    uint32_t word = 7;
    uint8_t byte = 7;
    EXPECT_EQ(user_rate_stormControlEnable_set(lead, 1, 5, 3, 1), -1);
    EXPECT_EQ(user_rate_stormsel_set(lead, 1, 5, 3, 1), 0);
    EXPECT_EQ(user_rate_stormsel_get(lead, 1, 5, 3, &word), 0);
    EXPECT_EQ(user_rate_stormExceedFlag_get(lead, 1, 5, &word, &word), 0);
    EXPECT_EQ(user_rate_stormExceedFlag_reset(lead, 1, 5), 0);
    EXPECT_EQ(user_rate_bandwidth_set(lead, 1, 5, 3, 1), 0);
    EXPECT_EQ(user_rate_bandwidth_get(lead, 1, 5, 3, &word, &word), 0);
    EXPECT_EQ(user_rate_stormCountMode_set(lead, 1, 0), 0);
    EXPECT_EQ(user_rate_stormCountMode_get(lead, 1, &byte), 0);
  }
}

}  // namespace
