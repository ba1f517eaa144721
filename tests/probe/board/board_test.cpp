// SPDX-License-Identifier: MIT
// A recording serves on a machine of the other byte order. The two here come
// from one of each: SWPROBE=record:FILE with the program of the board.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../process.h"

namespace {

constexpr int kStopped = 3;
const std::string kRecordings[] = {BOARD_RECORDINGS "/big.ndjson",
                                   BOARD_RECORDINGS "/little.ndjson"};

Outcome board(const std::string &words, const std::string &argument = "usual") {
  return run({BOARD_PROGRAM, argument, PROBE_LIBRARY, {{"SWPROBE", words}}});
}

TEST(BoardTest, TheProgramDoesAsRecordedOnEitherMachine) {
  for (const std::string &recording : kRecordings) {
    const Outcome outcome = board("expect-stop:" + recording);
    EXPECT_EQ(outcome.status, 0) << recording;
    EXPECT_EQ(outcome.error, "") << recording;
  }
}

TEST(BoardTest, ARecordingOfEitherMachineAnswersIt) {
  const Outcome usual = board("");
  ASSERT_THAT(usual.output, testing::HasSubstr("member 0400000f untagged 0000000f"));
  for (const std::string &recording : kRecordings) {
    const Outcome outcome = board("answer:" + recording);
    EXPECT_EQ(outcome.status, 0) << recording;
    EXPECT_EQ(outcome.output, usual.output) << recording;
    EXPECT_EQ(outcome.error, "") << recording;
  }
}

TEST(BoardTest, AnotherVlanIsSeenInEither) {
  for (const std::string &recording : kRecordings) {
    const Outcome outcome = board("expect-stop:" + recording, "other");
    EXPECT_EQ(outcome.status, kStopped) << recording;
    EXPECT_EQ(outcome.error, "swprobe: " + recording +
                                 ":2: the call differs in vid\n"
                                 "  recorded 1: rtk_vlan_create(unit=0, vid=10) = 0\n"
                                 "  made     1: rtk_vlan_create(unit=0, vid=11)\n");
  }
}

}  // namespace
