// SPDX-License-Identifier: MIT
// What the environment says about the log and the trace.
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/log.h>

#include <cstdarg>
#include <cstdio>
#include <string>

#include "child.h"

// Comes before the C library's, so that a test sees what would go to the
// system's log.
extern "C" void syslog(int level, const char *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  printf("syslog %d ", level);
  vprintf(format, arguments);
  va_end(arguments);
}

namespace {

using vchip_test::Environment;
using vchip_test::run;
using EnvironmentTest = vchip_test::ImageTest;

int log_two_lines() {
  Log_logging_func(6, 0, "TAG", "one %d\n", 1);
  Log_logging_func(3, 0, "TAG", "two\n");
  return vchip::platform().log_lines == 2 ? 0 : 1;
}

std::string logged_with(const char *value) {
  const auto outcome = run({{"VCHIP_LOG", value}}, log_two_lines);
  EXPECT_EQ(outcome.status, 0) << value;
  return outcome.output;
}

TEST_F(EnvironmentTest, LogTargets) {
  EXPECT_EQ(run({}, log_two_lines).output, "TAG: one 1\nTAG: two\n");
  EXPECT_EQ(logged_with(""), "TAG: one 1\nTAG: two\n");
  EXPECT_EQ(logged_with("stderr"), "TAG: one 1\nTAG: two\n");
  EXPECT_EQ(logged_with("none"), "");
  EXPECT_EQ(logged_with("syslog"), "syslog 6 TAG: one 1\nsyslog 3 TAG: two\n");
}

TEST_F(EnvironmentTest, AnotherLogTargetIsComplainedAboutOnce) {
  EXPECT_EQ(logged_with("Syslog"),
            "swctl-vchip: VCHIP_LOG=Syslog: expected stderr, syslog or none; logging to standard "
            "error\nTAG: one 1\nTAG: two\n");
}

int trace_state() {
  return sys_trace_get();
}

TEST_F(EnvironmentTest, TraceOfANewChip) {
  EXPECT_EQ(run({}, trace_state).status, 0);
  EXPECT_EQ(run({{"VCHIP_TRACE", ""}}, trace_state).status, 0);
  EXPECT_EQ(run({{"VCHIP_TRACE", "0"}}, trace_state).status, 0);
  EXPECT_EQ(run({{"VCHIP_TRACE", "1"}}, trace_state).status, 1);
}

TEST_F(EnvironmentTest, AnotherTraceValueIsComplainedAboutOnce) {
  const auto outcome = run({{"VCHIP_TRACE", "yes"}}, [] {
    vchip_reset();
    return sys_trace_get();
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "swctl-vchip: VCHIP_TRACE=yes: expected 0 or 1; tracing is off\n");
}

TEST_F(EnvironmentTest, AnImageThatExistsKeepsItsTrace) {
  make_image();
  Environment tracing = image();
  tracing.emplace("VCHIP_TRACE", "1");
  EXPECT_EQ(run(tracing, trace_state).status, 0);
  // A reset is a power-on, and asks again.
  EXPECT_EQ(run(tracing, [] { return vchip_reset() == 0 ? trace_state() : 2; }).status, 1);
  EXPECT_EQ(run(image(), trace_state).status, 1);
}

}  // namespace
