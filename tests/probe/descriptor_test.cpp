// SPDX-License-Identifier: MIT
// What a program prints never ends in a trace or a recording, whichever
// descriptors it has closed.
#include <cstdio>
#include <gtest/gtest.h>
#include <unistd.h>

#include "process.h"

namespace {

class DescriptorTest : public testing::Test {
 protected:
  const std::string base_ = testing::TempDir() + "swprobe." + std::to_string(getpid());
  const std::string trace_ = base_ + ".trace";
  const std::string recording_ = base_ + ".recording";

  void TearDown() override {
    std::remove(trace_.c_str());
    std::remove(recording_.c_str());
  }

  Outcome run_with(const std::string &argument, const std::string &words) const {
    return run({PLAIN_PROGRAM, argument, PROBE_LIBRARY, {{"SWPROBE", words}}});
  }
  std::string both() const { return "trace:" + trace_ + ",record:" + recording_; }
};

TEST_F(DescriptorTest, FilesAreAboveStandardError) {
  ASSERT_EQ(run_with("closed-", both()).status, 0);
  const std::string trace = text_of(trace_);
  const std::string recording = text_of(recording_);
  ASSERT_NE(trace, "");
  for (const std::string closed : {"0", "1", "2", "01", "02", "12", "012"}) {
    const Outcome outcome = run_with("closed-" + closed, both());
    EXPECT_EQ(outcome.status, 0) << closed;
    EXPECT_EQ(text_of(trace_), trace) << closed;
    EXPECT_EQ(text_of(recording_), recording) << closed;
  }
}

// The file that the program opens then has the number of standard error.
TEST_F(DescriptorTest, ATraceToAStandardErrorThatIsClosedGoesNowhere) {
  for (const std::string closed : {"2", "02", "12", "012"}) {
    const Outcome outcome = run_with("closed-" + closed, "trace");
    EXPECT_EQ(outcome.status, 0) << closed;
    EXPECT_EQ(outcome.error, "") << closed;
  }
}

TEST_F(DescriptorTest, AFileOfTheProgramIsNotTakenForOneOfTheProbe) {
  const Outcome outcome = run_with("close-all", both());
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.error, "swprobe: cannot write '" + recording_ +
                               "' any further: Bad file descriptor\n"
                               "swprobe: cannot write '" +
                               trace_ + "' any further: Bad file descriptor\n");
}

}  // namespace
