// SPDX-License-Identifier: MIT
#include "frame/static_mac.h"

#include <swctl-vchip/view.h>

#include "support/library_test.h"

namespace {

using swctl::note_static_mac;
using swctl::StaticMac;

constexpr uint8_t kMac[6] = {0x02, 0x00, 0x5e, 0xff, 0x0a, 0x01};
constexpr const char *kAdded = "User add static MAC 02:00:5e:ff:0a:01 into network system\n";
constexpr const char *kRemoved = "User remove static MAC 02:00:5e:ff:0a:01 from network system\n";

class StaticMacNote : public swctl_test::LibraryTest {
 protected:
  static std::vector<swprobe::Call> noted(StaticMac change, const char *function = "user_x",
                                          int line = 7) {
    swprobe::forget();
    testing::internal::CaptureStderr();
    note_static_mac(change, function, line, kMac);
    testing::internal::GetCapturedStderr();
    return swprobe::take();
  }
  static const std::string &text(const swprobe::Call &call, const std::string &argument) {
    for (const swprobe::Argument &candidate : call.arguments) {
      if (candidate.name == argument) return candidate.text;
    }
    throw std::out_of_range(argument);
  }
};

TEST_F(StaticMacNote, TraceOffLogsOnly) {
  for (const auto &[change, message] :
       {std::pair(StaticMac::added, kAdded), std::pair(StaticMac::removed, kRemoved)}) {
    const auto calls = noted(change);
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].name, "sys_trace_get");
    EXPECT_EQ(calls[1].name, "Log_logging_func");
    EXPECT_EQ(calls[1].in("level"), 6);
    EXPECT_EQ(calls[1].in("option"), 0);
    EXPECT_EQ(text(calls[1], "tag"), "STATIC-MAC");
    EXPECT_EQ(text(calls[1], "text"), message);
  }
  EXPECT_TRUE(vchip::platform().trace.empty());
}

TEST_F(StaticMacNote, TraceOnRecordsFirstAndLogsThen) {
  ASSERT_EQ(vchip_trace_set(1), 0);
  for (const auto &[change, message] :
       {std::pair(StaticMac::added, kAdded), std::pair(StaticMac::removed, kRemoved)}) {
    const auto calls = noted(change);
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0].name, "sys_trace_get");
    EXPECT_EQ(calls[1].name, "sys_trace_add_log");
    EXPECT_EQ(text(calls[1], "location"), "user_x():7");
    EXPECT_EQ(text(calls[1], "message"), message);
    EXPECT_EQ(calls[2].name, "Log_logging_func");
    EXPECT_EQ(text(calls[2], "text"), message);
  }
  EXPECT_EQ(vchip::platform().trace.size(), 2u);
}

TEST_F(StaticMacNote, AnyNonZeroAnswerMeansTracing) {
  for (int64_t answer : {1, 2, -1}) {
    swprobe::clear_plan();
    swctl_test::chip_answers("sys_trace_get", answer);
    EXPECT_EQ(noted(StaticMac::added).size(), 3u) << answer;
  }
}

TEST_F(StaticMacNote, LocationIsCutTo255Characters) {
  ASSERT_EQ(vchip_trace_set(1), 0);
  const std::string function(300, 'f');
  const auto calls = noted(StaticMac::removed, function.c_str());
  EXPECT_EQ(text(calls.at(1), "location"), function.substr(0, 255));
}

TEST_F(StaticMacNote, LineReachesThePlatform) {
  const std::string said = swctl_test::printed_by([] {
                             note_static_mac(StaticMac::added, "user_x", 7, kMac);
                           }).standard_error;
  EXPECT_EQ(said, std::string("STATIC-MAC: ") + kAdded);
}

}  // namespace
