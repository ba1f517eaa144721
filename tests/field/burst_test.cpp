// SPDX-License-Identifier: MIT
// user_field_meter_burst_size_set_del: what it tells the chip, and when. The
// book of the slots lives as long as the process, so each test gives back what
// it took; burst_slots_test.cpp looks at the book itself.
#include <swctl-vchip/view.h>
#include <swctl/field.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using Sizes = std::vector<uint32_t>;

constexpr uint32_t kBurstUnit = 1;
constexpr int32_t kNoSlot = USER_FIELD_NO_BURST_SLOT;

int32_t set(int32_t burst, int32_t current) {
  return user_field_meter_burst_size_set_del(kBurstUnit, burst, current);
}

class FieldBurst : public swctl_test::LibraryTest {
 protected:
  static void give_back(std::initializer_list<int32_t> slots) {
    swprobe::clear_plan();
    for (int32_t slot : slots) EXPECT_EQ(set(0, slot), 0);
    swprobe::forget();
  }
  static Sizes sizes() { return vchip::burst_sizes(kBurstUnit); }
};

TEST_F(FieldBurst, MetersOfOneBurstShareASlot) {
  EXPECT_EQ(set(4096, kNoSlot), 0);
  EXPECT_CALLS("rtk_acl_meterBurstSize_get(unit=1, table=0, burst.size=>[512 61440]) = 0",
               "rtk_acl_meterBurstSize_set(unit=1, table=0, burst.size=[32 61440]) = 0");
  EXPECT_EQ(set(4096, kNoSlot), 0);
  EXPECT_NO_CALLS();
  EXPECT_EQ(set(0, 0), 0);
  EXPECT_NO_CALLS();
  EXPECT_EQ(sizes(), (Sizes{32, 61440})) << "the other meter still has it";
  EXPECT_EQ(set(0, 0), 0);
  EXPECT_CALLS("rtk_acl_meterBurstSize_get(unit=1, table=0, burst.size=>[32 61440]) = 0",
               "rtk_acl_meterBurstSize_set(unit=1, table=0, burst.size=[512 61440]) = 0");
}

TEST_F(FieldBurst, ASecondBurstTakesTheSecondSlot) {
  EXPECT_EQ(set(4096, kNoSlot), 0);
  EXPECT_EQ(set(8192, kNoSlot), 1);
  EXPECT_EQ(sizes(), (Sizes{32, 64}));
  EXPECT_EQ(vchip::burst_sizes(0), (Sizes{512, 61440}));
  give_back({0, 1});
  EXPECT_EQ(sizes(), (Sizes{512, 61440}));
}

TEST_F(FieldBurst, AThirdBurstIsRefused) {
  set(4096, kNoSlot);
  set(8192, kNoSlot);
  set(8192, kNoSlot);
  swprobe::forget();
  EXPECT_EQ(set(2048, kNoSlot), -1);
  EXPECT_EQ(set(2048, 1), -1) << "two meters have slot 1, so it is not freed";
  EXPECT_NO_CALLS();
  EXPECT_EQ(sizes(), (Sizes{32, 64}));
  EXPECT_EQ(set(0, 1), 0);
  EXPECT_EQ(sizes(), (Sizes{32, 64})) << "the refused change gave nothing back";
  give_back({0, 1});
}

TEST_F(FieldBurst, TheOnlyUserMovesToTheFirstFreeSlot) {
  set(4096, kNoSlot);
  set(8192, kNoSlot);
  set(0, 0);
  swprobe::forget();
  EXPECT_EQ(set(2048, 1), 0);
  EXPECT_CALLS("rtk_acl_meterBurstSize_get(unit=1, table=0, burst.size=>[512 64]) = 0",
               "rtk_acl_meterBurstSize_set(unit=1, table=0, burst.size=[16 64]) = 0",
               "rtk_acl_meterBurstSize_get(unit=1, table=0, burst.size=>[16 64]) = 0",
               "rtk_acl_meterBurstSize_set(unit=1, table=0, burst.size=[16 61440]) = 0");
  give_back({0});
}

TEST_F(FieldBurst, TheOnlyUserOfSlotZeroTakesItAgain) {
  set(4096, kNoSlot);
  swprobe::forget();
  EXPECT_EQ(set(2048, 0), 0);
  EXPECT_CALLS("rtk_acl_meterBurstSize_get(unit=1, table=0, burst.size=>[32 61440]) = 0",
               "rtk_acl_meterBurstSize_set(unit=1, table=0, burst.size=[16 61440]) = 0");
  give_back({0});
}

TEST_F(FieldBurst, ASlotThatHoldsTheBurstIsKept) {
  set(4096, kNoSlot);
  swprobe::forget();
  EXPECT_EQ(set(4096, 0), 0);
  EXPECT_NO_CALLS();
  EXPECT_EQ(set(0, 0), 0);
  EXPECT_EQ(sizes(), (Sizes{512, 61440})) << "it was counted once";
}

TEST_F(FieldBurst, MovingToASharedSlotFreesTheOther) {
  set(4096, kNoSlot);
  set(8192, kNoSlot);
  swprobe::forget();
  EXPECT_EQ(set(4096, 1), 0);
  EXPECT_CALLS("rtk_acl_meterBurstSize_get(unit=1, table=0, burst.size=>[32 64]) = 0",
               "rtk_acl_meterBurstSize_set(unit=1, table=0, burst.size=[32 61440]) = 0");
  give_back({0, 0});
}

TEST_F(FieldBurst, ReleasingAFreeSlotSetsItsDefaultEachTime) {
  for (int times = 0; times < 2; ++times) {
    EXPECT_EQ(set(0, 0), 0);
    EXPECT_CALLS("rtk_acl_meterBurstSize_get(unit=1, table=0, burst.size=>[512 61440]) = 0",
                 "rtk_acl_meterBurstSize_set(unit=1, table=0, burst.size=[512 61440]) = 0");
  }
  // The count is -2 now: two meters too few are counted until it is even.
  EXPECT_EQ(set(4096, kNoSlot), 0);
  EXPECT_EQ(set(4096, kNoSlot), 0);
  EXPECT_EQ(set(4096, kNoSlot), 0);
  swprobe::forget();
  EXPECT_EQ(set(0, 0), 0);
  EXPECT_CALLS("rtk_acl_meterBurstSize_get(unit=1, table=0, burst.size=>[32 61440]) = 0",
               "rtk_acl_meterBurstSize_set(unit=1, table=0, burst.size=[512 61440]) = 0");
}

TEST_F(FieldBurst, SlotsThatDoNotExist) {
  for (int32_t slot : {2, -2, 0x7FFF, 0x8000, 0x10002}) {
    EXPECT_EQ(set(0, slot), 0) << slot;
    EXPECT_EQ(set(4096, slot), -1) << slot;
  }
  EXPECT_EQ(set(0, kNoSlot), 0);
  EXPECT_NO_CALLS();
}

TEST_F(FieldBurst, SlotsAreTheirLowSixteenBitsSigned) {
  EXPECT_EQ(set(4096, 0xFFFF), 0) << "none";
  EXPECT_EQ(set(8192, 0x4FFFF), 1) << "none";
  EXPECT_EQ(set(0, 0x10001), 0);
  EXPECT_EQ(sizes(), (Sizes{32, 61440}));
  give_back({0x50000});
  EXPECT_EQ(sizes(), (Sizes{512, 61440}));
}

TEST_F(FieldBurst, BurstsAreDividedTowardZero) {
  for (const char *call : {"rtk_acl_meterBurstSize_get", "rtk_acl_meterBurstSize_set"})
    chip_answers(call, 0);
  const struct {
    int32_t burst;
    uint32_t stored;
  } kCases[] = {{1, 0},
                {127, 0},
                {128, 1},
                {-127, 0},
                {-200, static_cast<uint32_t>(-1)},
                {INT32_MAX, 16777215},
                {INT32_MIN, static_cast<uint32_t>(-16777216)}};
  for (const auto &test : kCases) {
    swprobe::forget();
    EXPECT_EQ(set(test.burst, kNoSlot), 0);
    EXPECT_EQ(swprobe::take().at(1).in("burst.size[0]"), test.stored) << test.burst;
    EXPECT_EQ(set(0, 0), 0);
  }
}

TEST_F(FieldBurst, DefaultsAreNotDivided) {
  set(4096, kNoSlot);
  set(8192, kNoSlot);
  give_back({1, 0});
  EXPECT_EQ(sizes(), (Sizes{512, 61440}));
}

TEST_F(FieldBurst, GoesOnWhateverTheChipAnswers) {
  for (int32_t result : {-5, 9}) {
    swprobe::clear_plan();
    chip_answers("rtk_acl_meterBurstSize_get", result);
    chip_answers("rtk_acl_meterBurstSize_set", result);
    swprobe::forget();
    EXPECT_EQ(set(4096, kNoSlot), 0);
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[1].in("burst.size[0]"), 32);
    EXPECT_EQ(calls[1].in("burst.size[1]"), 0) << "nothing was read";
    EXPECT_EQ(set(0, 0), 0);
    EXPECT_EQ(swprobe::take().size(), 2u);
  }
}

TEST_F(FieldBurst, OneBookForAllUnits) {
  EXPECT_EQ(user_field_meter_burst_size_set_del(0, 4096, kNoSlot), 0);
  EXPECT_EQ(user_field_meter_burst_size_set_del(1, 4096, kNoSlot), 0);
  EXPECT_EQ(vchip::burst_sizes(0), (Sizes{32, 61440}));
  EXPECT_EQ(vchip::burst_sizes(1), (Sizes{512, 61440})) << "a slot that is shared is not written";
  give_back({0, 0});
}

TEST_F(FieldBurst, PrintsNothing) {
  const auto all = [] {
    set(4096, kNoSlot);
    user_field_meter_burst_size_set_del(VCHIP_UNITS, 0, 0);
    set(4096, 9);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
