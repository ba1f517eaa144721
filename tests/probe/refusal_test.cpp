// SPDX-License-Identifier: MIT
// A probe that cannot do what it was asked for ends the process.
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

#include "process.h"

namespace {

Outcome preloaded(const std::string &words, const std::string &plan = "",
                  const std::string &argument = "calls") {
  return run(
      {PLAIN_PROGRAM, argument, PROBE_LIBRARY, {{"SWPROBE", words}, {"SWPROBE_FAIL", plan}}});
}

// Status 1, one line, and no call has passed.
void expect_refused(const Outcome &outcome, const std::string &line) {
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.error, "swprobe: " + line + "\n");
}

TEST(RefusalTest, AWrongWord) {
  const std::string expected =
      "' is none of trace, trace:FILE, record:FILE, fail:FILE, expect:FILE, expect-stop:FILE, "
      "answer:FILE, rules:FILE, only:NAME, port:NUMBER and rotate:SIZE";
  expect_refused(preloaded("tarce"), "SWPROBE: 'tarce" + expected);
  expect_refused(preloaded("trace,record"), "SWPROBE: 'record" + expected);
}

TEST(RefusalTest, AFileThatCannotBeWritten) {
  expect_refused(preloaded("record:/nowhere/at/all"),
                 "cannot write '/nowhere/at/all': No such file or directory");
  expect_refused(preloaded("trace:/nowhere/at/all"),
                 "cannot write '/nowhere/at/all': No such file or directory");
}

TEST(RefusalTest, APlanThatCannotBeRead) {
  expect_refused(preloaded("fail:/nowhere/at/all"),
                 "cannot read '/nowhere/at/all': No such file or directory");
}

TEST(RefusalTest, AWrongRule) {
  expect_refused(preloaded("", "rtk_port_link_get nth 1 result -1; rtk_port_lnk_get result -1"),
                 "SWPROBE_FAIL: rule 2: no call is named 'rtk_port_lnk_get'");
  const std::string path = testing::TempDir() + "swprobe." + std::to_string(getpid()) + ".plan";
  std::ofstream(path) << "\nrtk_port_link_get prot 3 result -1\n";
  expect_refused(preloaded("fail:" + path),
                 path + ":2: 'rtk_port_link_get' has no argument 'prot'");
  unlink(path.c_str());
}

TEST(RefusalTest, AProgramThatMakesNoCallIsLeftInPeace) {
  const Outcome outcome = preloaded("tarce", "", "nothing");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.error, "");
}

TEST(RefusalTest, AProgramWithoutAPlatformIsTold) {
  const Outcome outcome = run({LONELY_PROGRAM, "twice"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "link -1 1000\nlink -1 1000\n");
  EXPECT_EQ(outcome.error,
            "swprobe: no library after the probe has rtk_port_link_get; it answers -1\n");
}

}  // namespace
