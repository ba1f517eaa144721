// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;

constexpr const char *kLearnGet = "rtk_l2_newMacOp_get";
constexpr const char *kSet = "rtk_l2_newMacOp_set";

struct Pair {
  uint32_t mode;
  uint32_t action;
};

class Learning : public swctl_test::LibraryTest {
 protected:
  static void port_has(uint32_t unit, int32_t port, const Pair &pair) {
    ASSERT_EQ(rtk_l2_newMacOp_set(unit, port, pair.mode, pair.action), 0);
    swprobe::forget();
  }
  static void expect_port(uint32_t unit, int32_t port, const Pair &pair) {
    const vchip::ForwardView view = vchip::forwarding(unit, port);
    EXPECT_EQ(view.learning_mode, pair.mode);
    EXPECT_EQ(view.new_address_action, pair.action);
  }
};

TEST_F(Learning, ReadsTheCallersUnitAndWritesUnitZero) {
  port_has(1, 5, {1, 2});
  EXPECT_EQ(user_port_learn_set(0, 1, 5, 0), 0);
  EXPECT_CALLS("rtk_l2_newMacOp_get(unit=1, port=5, mode=>1, action=>2) = 0",
               "rtk_l2_newMacOp_set(unit=0, port=5, mode=2, action=1) = 0");
  expect_port(1, 5, {1, 2});
  expect_port(0, 5, {2, 1});
}

TEST_F(Learning, RestoreReadsNothingAndWritesUnitZero) {
  port_has(1, 5, {1, 3});
  ASSERT_EQ(user_port_learn_set(0, 1, 5, 18), 0);
  swprobe::forget();
  EXPECT_EQ(user_port_learn_set(0, 1, 7, 16), 0);
  EXPECT_CALLS("rtk_l2_newMacOp_set(unit=0, port=7, mode=1, action=3) = 0");
}

TEST_F(Learning, TheLastPairSavedIsRestoredWhateverItsPort) {
  port_has(0, 3, {1, 1});
  port_has(0, 5, {2, 3});
  ASSERT_EQ(user_port_learn_set(0, 0, 3, 0), 0);
  ASSERT_EQ(user_port_learn_set(0, 0, 5, 18), 0);
  ASSERT_EQ(user_port_learn_set(0, 0, 3, 16), 0);
  expect_port(0, 3, {2, 3});
  ASSERT_EQ(user_port_learn_set(0, 0, 4, 16), 0);
  expect_port(0, 4, {2, 3});
}

// What the setter does, said once more in another way.
bool writes(uint32_t mode, uint32_t saved) {
  if (mode == 8) return saved != 2;
  if (mode == 2) return saved != 1 && saved != 2;
  return true;
}
Pair pair_of(uint32_t mode) {
  if (mode == 0) return {2, 1};
  if (mode == 18) return {2, 0};
  if (mode == 8) return {1, 2};
  if (mode == 2) return {0, 3};
  return {0, 0};
}

TEST_F(Learning, EveryModeAfterEverySavedPair) {
  for (uint32_t saved : {0u, 1u, 2u, 3u, 31u, 32u, 33u, 34u, 0x80000001u, 0xFFFFFFFFu}) {
    for (uint32_t action : {0u, 1u, 2u, 3u}) {
      for (uint32_t mode = 0; mode < 64; ++mode) {
        if (mode == 16) continue;
        SCOPED_TRACE(std::to_string(mode) + " over " + std::to_string(saved));
        swprobe::clear_plan();
        chip_answers(kLearnGet, 0, {{"mode", saved}, {"action", action}});
        chip_answers(kSet, 6);
        swprobe::forget();
        EXPECT_EQ(user_port_learn_set(0, 1, 5, mode), writes(mode, saved) ? 6 : 0);
        auto calls = swprobe::take();
        ASSERT_EQ(calls.size(), writes(mode, saved) ? 2u : 1u);
        if (writes(mode, saved)) {
          EXPECT_EQ(calls[1].in("mode"), pair_of(mode).mode);
          EXPECT_EQ(calls[1].in("action"), pair_of(mode).action);
        }
        EXPECT_EQ(user_port_learn_set(0, 1, 6, 16), 6) << "saved all the same";
        calls = swprobe::take();
        ASSERT_EQ(calls.size(), 1u);
        EXPECT_EQ(static_cast<uint32_t>(calls[0].in("mode")), saved);
        EXPECT_EQ(calls[0].in("action"), action);
      }
    }
  }
}

TEST_F(Learning, LargeModesAreAnyOther) {
  chip_answers(kSet, 0);
  for (uint32_t mode : {1u, 64u, 0x100u, 0x10000u + 8u, 0x80000000u, 0xFFFFFFFFu}) {
    swprobe::forget();
    EXPECT_EQ(user_port_learn_set(0, 1, 5, mode), 0);
    EXPECT_EQ(swprobe::take_lines().at(1),
              "rtk_l2_newMacOp_set(unit=0, port=5, mode=0, action=0) = 0 !");
  }
}

TEST_F(Learning, AFailedReadKeepsThePairThatWasSaved) {
  port_has(1, 5, {1, 3});
  ASSERT_EQ(user_port_learn_set(0, 1, 5, 18), 0);
  chip_answers(kLearnGet, -5);
  EXPECT_EQ(user_port_learn_set(0, 1, 5, 2), 0) << "saved mode 1 forbids it";
  swprobe::forget();
  EXPECT_EQ(user_port_learn_set(0, 1, 5, 8), 0);
  EXPECT_EQ(swprobe::take().size(), 2u) << "the failure does not end it";
  swprobe::forget();
  EXPECT_EQ(user_port_learn_set(0, 1, 5, 16), 0);
  EXPECT_CALLS("rtk_l2_newMacOp_set(unit=0, port=5, mode=1, action=3) = 0");
}

TEST_F(Learning, WhatAFailedReadWroteIsSaved) {
  chip_answers(kLearnGet, -5, {{"mode", 9}, {"action", 8}});
  EXPECT_EQ(user_port_learn_set(0, 1, 5, 0), 0);
  chip_answers(kSet, 0);
  swprobe::forget();
  user_port_learn_set(0, 1, 5, 16);
  EXPECT_CALLS("rtk_l2_newMacOp_set(unit=0, port=5, mode=9, action=8) = 0 !");
}

TEST_F(Learning, TheResultIsThatOfTheWrite) {
  for (int64_t result : {-5, 5}) {
    swprobe::clear_plan();
    chip_answers(kSet, result);
    for (uint32_t mode : {0u, 18u, 1u, 16u}) {
      EXPECT_EQ(user_port_learn_set(0, 1, 5, mode), result) << mode;
    }
  }
}

TEST_F(Learning, GetTranslatesTheMode) {
  const std::pair<uint32_t, uint32_t> cases[] = {{0, 1}, {1, 8}, {2, 0}, {3, 1}, {0xFFFFFFFF, 1}};
  for (const auto &[sdk, generic] : cases) {
    for (int64_t result : {0, -5, 5}) {
      swprobe::clear_plan();
      chip_answers(kLearnGet, result, {{"mode", sdk}, {"action", 3}});
      uint32_t mode = 7;
      EXPECT_EQ(user_port_learn_get(0, 1, 5, &mode), result);
      EXPECT_EQ(mode, generic) << sdk;
    }
  }
}

TEST_F(Learning, GetReadsTheCallersUnitAndSavesNothing) {
  port_has(1, 5, {1, 3});
  ASSERT_EQ(user_port_learn_set(0, 0, 9, 1), 0);
  swprobe::forget();
  uint32_t mode = 7;
  EXPECT_EQ(user_port_learn_get(0, 1, 5, &mode), 0);
  EXPECT_EQ(mode, 8u);
  EXPECT_CALLS("rtk_l2_newMacOp_get(unit=1, port=5, mode=>1, action=>3) = 0");
  ASSERT_EQ(user_port_learn_set(0, 0, 6, 16), 0);
  expect_port(0, 6, {0, 0});
}

TEST_F(Learning, GetCountsAsZeroIfTheSdkWritesNone) {
  chip_answers(kLearnGet, -5);
  uint32_t mode = 7;
  EXPECT_EQ(user_port_learn_get(0, 1, 5, &mode), -5);
  EXPECT_EQ(mode, 1u);
}

TEST_F(Learning, LeadingArgumentIsIgnored) {
  for (uint32_t lead : {1u, 0xFFFFFFFFu}) {
    uint32_t mode = 7;
    EXPECT_EQ(user_port_learn_set(lead, 0, 5, 0), 0);
    EXPECT_EQ(user_port_learn_get(lead, 0, 5, &mode), 0);
    EXPECT_EQ(mode, 0u);
  }
}

}  // namespace
