// SPDX-License-Identifier: MIT
// The probe in front of a C program that was built without it.
#include <swctl-probe/probe.h>

#include <bit>
#include <cstdio>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "process.h"

namespace {

constexpr char kOutput[] =
    "link 0 7\n"
    "link -1002 1000\n"
    "ability 0\n"
    "port 0\n"
    "log 6 0 PLAIN: 42 of \"m\xe9\"\n"
    "tracing 3\n"
    "operation make_calls():1 done\n";

constexpr char kTrace[] =
    "rtk_port_link_get(unit=0, port=3, link=>7) = 0\n"
    "rtk_port_link_get(unit=99, port=40) = -1002 (no such port on the unit)\n"
    "rtk_port_phyAutoNegoAbility_set(unit=1, port=-1, ability=0xf0000000) = 0\n"
    "adp_intf_2_phy_id(interface=5) = 0\n"
    "Log_logging_func(level=6, option=0, tag=\"PLAIN\", text=\"42 of \\\"m\xe9\\\"\\n\")\n"
    "sys_trace_get() = 3\n"
    "sys_trace_add_log(location=\"make_calls():1\", message=\"done\")\n";

class PreloadTest : public testing::Test {
 protected:
  const std::string file_ =
      testing::TempDir() + "swprobe." + std::to_string(getpid()) + ".recording";

  void TearDown() override { std::remove(file_.c_str()); }

  static Outcome preloaded(const std::string &words, const std::string &argument = "calls",
                           const std::string &plan = "") {
    return run(
        {PLAIN_PROGRAM, argument, PROBE_LIBRARY, {{"SWPROBE", words}, {"SWPROBE_FAIL", plan}}});
  }
};

TEST_F(PreloadTest, WithoutTheProbeTheProgramRunsAlone) {
  const Outcome outcome = run({PLAIN_PROGRAM, "calls", "", {{"SWPROBE", "trace"}}});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, kOutput);
  EXPECT_EQ(outcome.error, "");
}

TEST_F(PreloadTest, AnIdleProbeChangesNothing) {
  const Outcome outcome = preloaded("");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, kOutput);
  EXPECT_EQ(outcome.error, "");
}

TEST_F(PreloadTest, TracesToStandardError) {
  const Outcome outcome = preloaded("trace");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, kOutput);
  EXPECT_EQ(outcome.error, kTrace);
}

TEST_F(PreloadTest, TracesToAFile) {
  const Outcome outcome = preloaded("trace:" + file_);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(text_of(file_), kTrace);
}

TEST_F(PreloadTest, RecordsWhatCanBeReadBack) {
  const Outcome outcome = preloaded("record:" + file_);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, kOutput);
  EXPECT_EQ(outcome.error, "");
  std::string lines;
  uint64_t number = 0;
  for (const swprobe::Call &call : swprobe::read_recording(file_)) {
    EXPECT_EQ(call.number, ++number);
    lines += call.line() + "\n";
  }
  std::string expected = kTrace;
  const std::string sentence = " (no such port on the unit)";
  expected.erase(expected.find(sentence), sentence.size());
  EXPECT_EQ(lines, expected);
}

TEST_F(PreloadTest, TheRecordingIsPlainText) {
  preloaded("record:" + file_, "crash");
  EXPECT_EQ(text_of(file_),
            std::string("{\"format\":\"swctl-calls\",\"version\":1,\"byte_order\":\"") +
                (std::endian::native == std::endian::big ? "big" : "little") +
                "\"}\n"
                "{\"number\":1,\"call\":\"rtk_port_link_get\",\"arguments\":{\"unit\":{\"in\":0},"
                "\"port\":{\"in\":1},\"link\":{\"out\":7}},\"result\":0,\"made_up\":false}\n");
}

TEST_F(PreloadTest, AProcessThatEndsWithoutWarningLosesNothing) {
  const Outcome outcome = preloaded("record:" + file_, "crash");
  EXPECT_EQ(outcome.status, 17);
  EXPECT_EQ(swprobe::read_recording(file_).size(), 1u);
}

TEST_F(PreloadTest, FailsAsAPlanInTheEnvironmentSays) {
  const Outcome outcome = preloaded("trace", "twice", "rtk_*_get nth 2 result -9 out link 5");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "link 0 7\nlink -9 5\n");
  EXPECT_EQ(outcome.error,
            "rtk_port_link_get(unit=0, port=0, link=>7) = 0\n"
            "rtk_port_link_get(unit=0, port=1) = -9 !\n");
}

TEST_F(PreloadTest, FailsAsAPlanFileSays) {
  std::ofstream(file_) << "# port 1 is broken\nrtk_port_link_get port 1 result -1002\n";
  const Outcome outcome = preloaded("fail:" + file_ + ",trace", "twice");
  EXPECT_EQ(outcome.output, "link 0 7\nlink -1002 1000\n");
  EXPECT_EQ(outcome.error,
            "rtk_port_link_get(unit=0, port=0, link=>7) = 0\n"
            "rtk_port_link_get(unit=0, port=1) = -1002 (no such port on the unit) !\n");
}

TEST_F(PreloadTest, APlanAloneWritesNothing) {
  const Outcome outcome = preloaded("", "twice", "rtk_port_link_get port 1 result -3");
  EXPECT_EQ(outcome.output, "link 0 7\nlink -3 1000\n");
  EXPECT_EQ(outcome.error, "");
}

TEST_F(PreloadTest, CallsMayComeUntilTheEnd) {
  for (const std::string word : {"record:", "record:library:"}) {
    const Outcome outcome = preloaded(word + file_, "late");
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(swprobe::read_recording(file_).size(), 2u) << word;
  }
}

// A wrong plan looks like a program without a fault.
TEST_F(PreloadTest, RulesThatNeverFiredAreTold) {
  const Outcome outcome = preloaded("", "twice",
                                    "rtk_port_link_get port 7 result -3; rtk_port_link_get nth 3 "
                                    "result -3; rtk_port_link_get port 1 result -4");
  EXPECT_EQ(outcome.output, "link 0 7\nlink -4 1000\n");
  EXPECT_EQ(outcome.error,
            "swprobe: SWPROBE_FAIL: rule 1 never fired: no call matched it\n"
            "swprobe: SWPROBE_FAIL: rule 2 never fired: it waited for call 3 and 2 calls matched "
            "it\n");
}

TEST_F(PreloadTest, RulesThatContradictAreTold) {
  std::ofstream(file_) << "\nrtk_port_link_get port 1 result -3\n";
  const Outcome outcome =
      preloaded("fail:" + file_, "twice",
                "rtk_port_link_get result -3; rtk_port_link_get port 1 result -3; "
                "rtk_port_link_get nth 2 result -3 out link 1");
  EXPECT_EQ(outcome.output, "link -3 1000\nlink -3 1000\n");
  EXPECT_EQ(outcome.error, "swprobe: SWPROBE_FAIL: rule 2 never fired: " + file_ +
                               ":2 came first\n"
                               "swprobe: SWPROBE_FAIL: rule 3 contradicts " +
                               file_ + ":2, which answered 1 call that both were for\n");
}

TEST_F(PreloadTest, AChildWithoutCallsTellsNothing) {
  const Outcome outcome = preloaded("", "fork-idle", "rtk_port_link_get port 7 result -3");
  EXPECT_EQ(outcome.error, "swprobe: SWPROBE_FAIL: rule 1 never fired: no call matched it\n");
}

TEST_F(PreloadTest, AProcessAndItsChildTraceBoth) {
  const Outcome outcome = preloaded("trace", "fork");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "link 0 7\nlink 0 7\nlink 0 7\n");
  EXPECT_EQ(outcome.error,
            "rtk_port_link_get(unit=0, port=1, link=>7) = 0\n"
            "rtk_port_link_get(unit=0, port=2, link=>7) = 0\n"
            "rtk_port_link_get(unit=0, port=3, link=>7) = 0\n");
}

}  // namespace
