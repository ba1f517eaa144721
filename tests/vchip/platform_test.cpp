// SPDX-License-Identifier: MIT
// The platform's log and operation trace.
#include <swctl-vchip/view.h>
#include <swctl/platform/log.h>

#include <string>

#include "private_chip.h"

namespace {

using Platform = vchip_test::PrivateChip;

template <typename Step>
std::string standard_error_of(Step step) {
  testing::internal::CaptureStderr();
  step();
  return testing::internal::GetCapturedStderr();
}

TEST_F(Platform, ALogLineGoesToStandardError) {
  EXPECT_EQ(standard_error_of(
                [] { Log_logging_func(6, 0, "STATIC-MAC", "User add %02x:%s\n", 0xab, "cd"); }),
            "STATIC-MAC: User add ab:cd\n");
  EXPECT_EQ(vchip::platform().log_lines, 1u);
}

TEST_F(Platform, AMissingLineEndIsAdded) {
  EXPECT_EQ(standard_error_of([] { Log_logging_func(0, 1, "T", "a"); }), "T: a\n");
}

TEST_F(Platform, WithoutATagThereIsOnlyTheText) {
  EXPECT_EQ(standard_error_of([] { Log_logging_func(6, 0, nullptr, "plain %d", 5); }), "plain 5\n");
}

TEST_F(Platform, WithoutAFormatThereIsNothing) {
  const char *none = nullptr;
  EXPECT_EQ(standard_error_of([=] { Log_logging_func(6, 0, "T", none, 0); }), "");
  EXPECT_EQ(vchip::platform().log_lines, 0u);
}

TEST_F(Platform, LongLinesAreWhole) {
  const std::string text(5000, 'x');
  EXPECT_EQ(standard_error_of([&] { Log_logging_func(6, 0, "T", "%s\n", text.c_str()); }),
            "T: " + text + "\n");
}

TEST_F(Platform, LinesAreCountedUntilReset) {
  standard_error_of([] {
    for (int line = 0; line < 3; ++line) Log_logging_func(6, 0, "T", "x\n");
  });
  EXPECT_EQ(vchip::platform().log_lines, 3u);
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_EQ(vchip::platform().log_lines, 0u);
}

TEST_F(Platform, TheTraceIsOffUntilItIsSwitchedOn) {
  EXPECT_EQ(sys_trace_get(), 0);
  EXPECT_FALSE(vchip::platform().trace_on);
  ASSERT_EQ(vchip_trace_set(1), 0);
  EXPECT_EQ(sys_trace_get(), 1);
  EXPECT_TRUE(vchip::platform().trace_on);
  ASSERT_EQ(vchip_trace_set(-5), 0);
  EXPECT_EQ(sys_trace_get(), -5);
  EXPECT_TRUE(vchip::platform().trace_on);
  ASSERT_EQ(vchip_trace_set(0), 0);
  EXPECT_EQ(sys_trace_get(), 0);
  ASSERT_EQ(vchip_trace_set(1), 0);
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_EQ(sys_trace_get(), 0);
}

TEST_F(Platform, RecordsAreKeptInOrder) {
  sys_trace_add_log("a():1", "first\n");
  sys_trace_add_log("b():2", "second\n");
  const vchip::PlatformView view = vchip::platform();
  ASSERT_EQ(view.trace.size(), 2u);
  EXPECT_EQ(view.trace[0].location, "a():1");
  EXPECT_EQ(view.trace[0].message, "first\n");
  EXPECT_EQ(view.trace[1].location, "b():2");
  EXPECT_EQ(view.trace[1].message, "second\n");
  EXPECT_EQ(view.log_lines, 0u);
}

TEST_F(Platform, TheOldestRecordsMakeRoom) {
  constexpr int kAdded = 256 * 2 + 44;
  for (int number = 0; number < kAdded; ++number)
    sys_trace_add_log("f():1", std::to_string(number).c_str());
  const vchip::PlatformView view = vchip::platform();
  ASSERT_EQ(view.trace.size(), 256u);
  for (int index = 0; index < 256; ++index)
    EXPECT_EQ(view.trace[static_cast<size_t>(index)].message, std::to_string(kAdded - 256 + index));
}

TEST_F(Platform, TheRingIsExactlyFullWithoutLoss) {
  for (int number = 0; number < 256; ++number)
    sys_trace_add_log("f():1", std::to_string(number).c_str());
  const vchip::PlatformView view = vchip::platform();
  ASSERT_EQ(view.trace.size(), 256u);
  EXPECT_EQ(view.trace.front().message, "0");
  EXPECT_EQ(view.trace.back().message, "255");
}

TEST_F(Platform, LongTextsAreCut) {
  const std::string fits(255, 'm');
  sys_trace_add_log((fits + "x").c_str(), (fits + std::string(1000, 'y')).c_str());
  sys_trace_add_log(fits.c_str(), "");
  const vchip::PlatformView view = vchip::platform();
  ASSERT_EQ(view.trace.size(), 2u);
  EXPECT_EQ(view.trace[0].location, fits);
  EXPECT_EQ(view.trace[0].message, fits);
  EXPECT_EQ(view.trace[1].location, fits);
  EXPECT_EQ(view.trace[1].message, "");
}

TEST_F(Platform, NullTextsAreNoRecord) {
  sys_trace_add_log(nullptr, "m");
  sys_trace_add_log("l", nullptr);
  EXPECT_TRUE(vchip::platform().trace.empty());
}

TEST_F(Platform, ResetEmptiesTheTrace) {
  sys_trace_add_log("l", "m");
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_TRUE(vchip::platform().trace.empty());
}

}  // namespace
