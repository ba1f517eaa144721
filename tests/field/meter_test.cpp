// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/field.h>

#include "support/library_test.h"

namespace {

using FieldMeter = swctl_test::LibraryTest;
using swctl_test::chip_answers;
using vchip::MeterView;

constexpr const char *kMode = "rtk_acl_meterMode_set";
constexpr const char *kMeterGet = "rtk_acl_meterEntry_get";
constexpr const char *kMeterSet = "rtk_acl_meterEntry_set";
constexpr int32_t kMeterResults[] = {3, -1, -1005, INT32_MIN, INT32_MAX};

TEST_F(FieldMeter, EntrySetTakesTheRateAsGiven) {
  EXPECT_EQ(user_field_meter_entry_set(1, 1000, 3), 0);
  EXPECT_EQ(user_field_meter_entry_set(0, 15, 4), 0);
  EXPECT_CALLS("rtk_acl_meterMode_set(unit=1, meter=3, mode=1) = 0",
               "rtk_acl_meterEntry_set(unit=1, meter=3, entry.enable=1, entry.rate=1000, "
               "entry.burst_slot=0) = 0",
               "rtk_acl_meterMode_set(unit=0, meter=4, mode=1) = 0",
               "rtk_acl_meterEntry_set(unit=0, meter=4, entry.enable=1, entry.rate=15, "
               "entry.burst_slot=0) = 0");
  EXPECT_EQ(vchip::meter(1, 3), (MeterView{true, 1000, 0, 1}));
}

TEST_F(FieldMeter, EntrySetRefusesNoMeter) {
  EXPECT_EQ(user_field_meter_entry_set(1, 1000, USER_FIELD_NO_METER), -1);
  EXPECT_NO_CALLS();
}

TEST_F(FieldMeter, EntrySetIgnoresTheModesResult) {
  chip_answers(kMode, -5);
  EXPECT_EQ(user_field_meter_entry_set(1, 1000, 3), 0);
  EXPECT_EQ(vchip::meter(1, 3), (MeterView{true, 1000, 0, 0}));
}

TEST_F(FieldMeter, RateBurstSetTakesSixteenthsAndTheSlot) {
  EXPECT_EQ(user_field_meter_rate_burst_set(1, 3, 1000, 1), 0);
  EXPECT_CALLS(
      "rtk_acl_meterEntry_set(unit=1, meter=3, entry.enable=1, entry.rate=62, "
      "entry.burst_slot=1) = 0");
  EXPECT_EQ(vchip::meter(1, 3), (MeterView{true, 62, 1, 0}));
}

TEST_F(FieldMeter, RatesAreDividedTowardZero) {
  chip_answers(kMeterSet, 0);
  const struct {
    int32_t rate;
    uint32_t stored;
  } kCases[] = {{0, 0},
                {15, 0},
                {16, 1},
                {-15, 0},
                {-16, static_cast<uint32_t>(-1)},
                {-20, static_cast<uint32_t>(-1)},
                {-32, static_cast<uint32_t>(-2)},
                {INT32_MAX, 134217727},
                {INT32_MIN, static_cast<uint32_t>(-134217728)}};
  for (const auto &test : kCases) {
    EXPECT_EQ(user_field_meter_rate_burst_set(1, 3, test.rate, 0), 0);
    EXPECT_EQ(swprobe::take().at(0).in("entry.rate"), test.stored) << test.rate;
  }
}

TEST_F(FieldMeter, SlotsAreTheirLowSixteenBitsSigned) {
  chip_answers(kMeterSet, 0);
  const struct {
    int32_t slot;
    uint32_t stored;
  } kCases[] = {
      {0x10001, 1}, {-1, 0xFFFFFFFF}, {0xFFFF, 0xFFFFFFFF}, {0x7FFF, 0x7FFF}, {0x8000, 0xFFFF8000}};
  for (const auto &test : kCases) {
    EXPECT_EQ(user_field_meter_rate_burst_set(1, 3, 16, test.slot), 0);
    EXPECT_EQ(swprobe::take().at(0).in("entry.burst_slot"), test.stored) << test.slot;
  }
}

TEST_F(FieldMeter, DelWritesZeroes) {
  user_field_meter_rate_burst_set(1, 3, 1000, 1);
  swprobe::forget();
  EXPECT_EQ(user_field_meter_entry_del(1, 3), 0);
  EXPECT_CALLS(
      "rtk_acl_meterEntry_set(unit=1, meter=3, entry.enable=0, entry.rate=0, "
      "entry.burst_slot=0) = 0");
  EXPECT_EQ(vchip::meter(1, 3), (MeterView{false, 0, 0, 0}));
}

TEST_F(FieldMeter, EnableChangesTheStateAlone) {
  user_field_meter_rate_burst_set(1, 3, 1600, 1);
  swprobe::forget();
  EXPECT_EQ(user_field_meter_entry_enable(1, 3, 0), 0);
  EXPECT_CALLS(
      "rtk_acl_meterEntry_get(unit=1, meter=3, entry.enable=>1, entry.rate=>100, "
      "entry.burst_slot=>1) = 0",
      "rtk_acl_meterEntry_set(unit=1, meter=3, entry.enable=0, entry.rate=100, "
      "entry.burst_slot=1) = 0");
  for (uint32_t enable : {1u, 2u, 0x80000000u}) {
    user_field_meter_entry_enable(1, 3, 0);
    EXPECT_EQ(user_field_meter_entry_enable(1, 3, enable), 0);
    EXPECT_EQ(vchip::meter(1, 3), (MeterView{true, 100, 1, 0}));
  }
}

TEST_F(FieldMeter, EnableStopsAtANegativeReadAlone) {
  chip_answers(kMeterGet, -5);
  EXPECT_EQ(user_field_meter_entry_enable(1, 3, 1), -5);
  EXPECT_EQ(swprobe::take().size(), 1u);
  EXPECT_FALSE(vchip::meter(1, 3).enabled);
  swprobe::clear_plan();
  chip_answers(kMeterGet, 9, {{"entry.rate", 44}});
  EXPECT_EQ(user_field_meter_entry_enable(1, 3, 1), 0);
  EXPECT_EQ(vchip::meter(1, 3), (MeterView{true, 44, 0, 0}));
}

TEST_F(FieldMeter, HandTheResultOfTheWriteOn) {
  for (int32_t result : kMeterResults) {
    swprobe::clear_plan();
    chip_answers(kMeterSet, result);
    EXPECT_EQ(user_field_meter_entry_set(1, 1, 3), result);
    EXPECT_EQ(user_field_meter_rate_burst_set(1, 3, 16, 0), result);
    EXPECT_EQ(user_field_meter_entry_del(1, 3), result);
    EXPECT_EQ(user_field_meter_entry_enable(1, 3, 1), result);
  }
}

TEST_F(FieldMeter, AnyUnitAndMeterGoThrough) {
  for (const char *call : {kMode, kMeterGet, kMeterSet}) chip_answers(call, 0);
  user_field_meter_entry_set(0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFE);
  user_field_meter_rate_burst_set(0xFFFFFFFF, 0xFFFFFFFE, 0, 0);
  user_field_meter_entry_del(0xFFFFFFFF, 0xFFFFFFFE);
  user_field_meter_entry_enable(0xFFFFFFFF, 0xFFFFFFFE, 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 6u);
  for (const auto &call : calls) {
    EXPECT_EQ(call.in("unit"), 0xFFFFFFFF);
    EXPECT_EQ(call.in("meter"), 0xFFFFFFFE);
  }
  EXPECT_EQ(calls[1].in("entry.rate"), 0xFFFFFFFF);
}

TEST_F(FieldMeter, PrintNothing) {
  const auto all = [] {
    user_field_meter_entry_set(VCHIP_UNITS, 1, 3);
    user_field_meter_entry_set(1, 1, USER_FIELD_NO_METER);
    user_field_meter_rate_burst_set(VCHIP_UNITS, 3, 16, 0);
    user_field_meter_entry_del(VCHIP_UNITS, 3);
    user_field_meter_entry_enable(VCHIP_UNITS, 3, 1);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
