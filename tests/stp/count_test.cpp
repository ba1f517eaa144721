// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/stp.h>

#include <string>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using StgCount = swctl_test::LibraryTest;

constexpr const char *kExists = "rtk_stp_isMstpInstanceExist_get";
constexpr uint32_t kUntouched = 99;

TEST_F(StgCount, AsksForSixteenInstancesOfUnitZero) {
  ASSERT_EQ(rtk_stp_mstpInstance_create(0, 3), 0);
  ASSERT_EQ(rtk_stp_mstpInstance_create(1, 4), 0);
  swprobe::forget();
  uint32_t count = kUntouched;
  EXPECT_EQ(user_stg_stg_count_get(6, 1, &count), 0);
  EXPECT_EQ(count, 2u);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 16u);
  for (size_t instance = 0; instance < 16; ++instance) {
    EXPECT_EQ(calls[instance].name, kExists);
    EXPECT_EQ(calls[instance].in("unit"), 0);
    EXPECT_EQ(calls[instance].in("instance"), static_cast<int64_t>(instance));
  }
}

TEST_F(StgCount, CountsAll) {
  for (uint32_t instance = 1; instance < 16; ++instance)
    ASSERT_EQ(rtk_stp_mstpInstance_create(0, instance), 0);
  uint32_t count = kUntouched;
  EXPECT_EQ(user_stg_stg_count_get(0, 0, &count), 0);
  EXPECT_EQ(count, 16u);
}

TEST_F(StgCount, NoneIsAFailureAndLeavesTheCount) {
  chip_answers(kExists, 0, {{"exists", 0}});
  uint32_t count = kUntouched;
  EXPECT_EQ(user_stg_stg_count_get(0, 0, &count), -1);
  EXPECT_EQ(count, kUntouched);
}

TEST_F(StgCount, AnyFlagButZeroCountsWhateverTheResult) {
  chip_answers(kExists, 0, {{"exists", 0}});
  swprobe::answer(kExists, 1, {-5, {{"exists", 0x80000000}}});
  swprobe::answer(kExists, 16, {7, {{"exists", 1}}});
  uint32_t count = kUntouched;
  EXPECT_EQ(user_stg_stg_count_get(0, 0, &count), 0);
  EXPECT_EQ(count, 2u);
}

// The flag is cleared once, not for each call.
TEST_F(StgCount, ACallThatWritesNothingCountsLikeTheOneBefore) {
  chip_answers(kExists, -5);
  swprobe::answer(kExists, 10, {0, {{"exists", 1}}});
  swprobe::answer(kExists, 13, {0, {{"exists", 0}}});
  uint32_t count = kUntouched;
  EXPECT_EQ(user_stg_stg_count_get(0, 0, &count), 0);
  EXPECT_EQ(count, 3u);
}

TEST_F(StgCount, NothingWrittenAtAllIsNone) {
  chip_answers(kExists, -5);
  uint32_t count = kUntouched;
  EXPECT_EQ(user_stg_stg_count_get(0, 0, &count), -1);
  EXPECT_EQ(count, kUntouched);
}

TEST_F(StgCount, PrintsNothing) {
  uint32_t count = 0;
  chip_answers(kExists, -5);
  EXPECT_PRINTED(swctl_test::printed_by([&] { user_stg_stg_count_get(0, 0, &count); }), "", "");
}

}  // namespace
