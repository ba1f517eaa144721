// SPDX-License-Identifier: MIT
// A program held against a recording, or answered by one.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "process.h"

namespace {

constexpr int kUnexpected = 3;
constexpr char kTwice[] = "link 0 7\nlink 0 7\n";

class GoldenTest : public testing::Test {
 protected:
  const std::filesystem::path directory_ =
      testing::TempDir() + "swprobe_golden_test." + std::to_string(getpid());

  void SetUp() override { std::filesystem::create_directory(directory_); }
  void TearDown() override { std::filesystem::remove_all(directory_); }

  std::string file(const std::string &name) const { return directory_ / name; }
  static Outcome preloaded(const std::string &words, const std::string &argument,
                           const std::string &plan = "") {
    return run(
        {PLAIN_PROGRAM, argument, PROBE_LIBRARY, {{"SWPROBE", words}, {"SWPROBE_FAIL", plan}}});
  }
  // What the program does with this argument, recorded.
  std::string recorded(const std::string &argument) const {
    preloaded("record:" + file("golden"), argument);
    return file("golden");
  }
  std::vector<std::string> names() const {
    std::vector<std::string> all;
    for (const auto &entry : std::filesystem::directory_iterator(directory_))
      all.push_back(entry.path().filename());
    return all;
  }
};

TEST_F(GoldenTest, AProgramThatDoesAsRecordedIsLeftInPeace) {
  const std::string golden = recorded("calls");
  for (const std::string word : {"expect:", "expect-stop:"}) {
    const Outcome outcome = preloaded(word + golden, "calls");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.error, "");
  }
}

TEST_F(GoldenTest, ADifferenceIsTold) {
  const std::string golden = recorded("twice");
  const Outcome outcome = preloaded("expect:" + golden, "once");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "link 0 7\n");
  EXPECT_EQ(outcome.error, "swprobe: " + golden +
                               ":2: the call differs in port\n"
                               "  recorded 1: rtk_port_link_get(unit=0, port=0, link=>7) = 0\n"
                               "  made     1: rtk_port_link_get(unit=0, port=1)\n");
}

TEST_F(GoldenTest, ItEndsTheProgramIfAskedTo) {
  const std::string golden = recorded("once");
  const Outcome outcome = preloaded("trace,expect-stop:" + golden, "calls");
  EXPECT_EQ(outcome.status, kUnexpected);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.error, "swprobe: " + golden +
                               ":2: the call differs in port\n"
                               "  recorded 1: rtk_port_link_get(unit=0, port=1, link=>7) = 0\n"
                               "  made     1: rtk_port_link_get(unit=0, port=3)\n")
      << "the call was made";
}

TEST_F(GoldenTest, CallsThatAreMissingAtTheEndAreTold) {
  const std::string golden = recorded("twice");
  std::string text = text_of(golden);
  const std::string again = text.substr(text.find('\n') + 1);
  std::ofstream(golden, std::ios::app) << again;
  const std::string told = "swprobe: " + golden +
                           ":4: the program ends before 2 recorded calls\n"
                           "  before   1: rtk_port_link_get(unit=0, port=0, link=>7) = 0\n"
                           "  before   2: rtk_port_link_get(unit=0, port=1, link=>7) = 0\n"
                           "  recorded 1: rtk_port_link_get(unit=0, port=0, link=>7) = 0\n";
  const Outcome outcome = preloaded("expect:" + golden, "twice");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, kTwice);
  EXPECT_EQ(outcome.error, told);
  const Outcome stopped = preloaded("expect-stop:" + golden, "twice");
  EXPECT_EQ(stopped.status, kUnexpected);
  EXPECT_EQ(stopped.output, kTwice);
  EXPECT_EQ(stopped.error, told);
}

TEST_F(GoldenTest, RulesSayWhatMayDiffer) {
  const std::string golden = recorded("once");
  std::ofstream(file("rules")) << "differ rtk_port_link_get port\n"
                                  "ignore Log_logging_func sys_* adp_* *_set\n";
  std::string text = text_of(golden);
  std::ofstream(golden, std::ios::app) << text.substr(text.find('\n') + 1);
  const Outcome outcome = preloaded("expect-stop:" + golden + ",rules:" + file("rules"), "twice");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.error, "");
  std::ofstream(file("rules")) << "# wrong:\ndiffre rtk_port_link_get port\n";
  const Outcome refused = preloaded("expect-stop:" + golden + ",rules:" + file("rules"), "twice");
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.error,
            "swprobe: " + file("rules") + ":2: 'diffre' is none of differ, unordered and ignore\n");
}

// The answer of a call that is not compared is not that of the one before it.
TEST_F(GoldenTest, AnIgnoredCallHasNoPartInADifference) {
  const std::string golden = recorded("calls");
  std::string text = text_of(golden);
  text.replace(text.find("PLAIN"), 5, "OTHER");
  std::ofstream(golden) << text;
  std::ofstream(file("rules")) << "ignore adp_intf_2_phy_id\n";
  const Outcome outcome = preloaded("expect:" + golden + ",rules:" + file("rules"), "calls");
  EXPECT_THAT(outcome.error, testing::HasSubstr("the call differs in tag"));
  EXPECT_THAT(outcome.error, testing::Not(testing::HasSubstr("answered")));
}

TEST_F(GoldenTest, ARecordingThatIsCutOffIsUsedUpToThere) {
  const std::string golden = recorded("twice");
  std::filesystem::resize_file(golden, std::filesystem::file_size(golden) - 30);
  const Outcome outcome = preloaded("expect-stop:" + golden, "once-more");
  EXPECT_EQ(outcome.error, "swprobe: " + golden +
                               ":3: the recording is cut off here; what comes before is used\n");
  EXPECT_EQ(outcome.status, 0);
}

TEST_F(GoldenTest, ARecordingAnswersWithoutAPlatform) {
  const std::string golden = recorded("twice");
  const Outcome outcome =
      run({LONELY_PROGRAM, "twice", "", {{"SWPROBE", "answer:" + golden + ",trace"}}});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, kTwice);
  EXPECT_EQ(outcome.error,
            "rtk_port_link_get(unit=0, port=0, link=>7) = 0 !\n"
            "rtk_port_link_get(unit=0, port=1, link=>7) = 0 !\n");
}

TEST_F(GoldenTest, ItAnswersLogAndTraceToo) {
  const std::string golden = recorded("calls");
  const Outcome outcome = run({LONELY_PROGRAM, "calls", "", {{"SWPROBE", "answer:" + golden}}});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "link 0 7\nlink -1002 1000\nability 0\nport 0\ntracing 3\n");
  EXPECT_EQ(outcome.error, "");
}

TEST_F(GoldenTest, WhatWasNotRecordedIsRefused) {
  const std::string golden = recorded("once");
  const Outcome outcome = preloaded("answer:" + golden, "twice");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "link -1 1000\nlink 0 7\n");
  EXPECT_EQ(outcome.error,
            "swprobe: " + golden +
                ": no call like this was recorded: rtk_port_link_get(unit=0, port=0)\n");
}

TEST_F(GoldenTest, APlanGoesBeforeTheAnswers) {
  const std::string golden = recorded("twice");
  const Outcome outcome =
      preloaded("answer:" + golden, "twice", "rtk_port_link_get port 1 result -9");
  EXPECT_EQ(outcome.output, "link 0 7\nlink -9 1000\n");
}

TEST_F(GoldenTest, SeveralDestinationsAtOnce) {
  const Outcome outcome = preloaded(
      "record:" + file("one") + ",trace:stderr,trace:" + file("two") + ",record:" + file("three"),
      "once");
  EXPECT_EQ(outcome.error, "rtk_port_link_get(unit=0, port=1, link=>7) = 0\n");
  EXPECT_EQ(text_of(file("two")), outcome.error);
  EXPECT_EQ(text_of(file("one")), text_of(file("three")));
  EXPECT_THAT(text_of(file("one")), testing::HasSubstr("rtk_port_link_get"));
}

TEST_F(GoldenTest, AFileForEachProcess) {
  preloaded("trace:" + file("%p"), "fork");
  std::vector<std::string> texts;
  for (const std::string &name : names()) texts.push_back(text_of(file(name)));
  EXPECT_THAT(texts,
              testing::UnorderedElementsAre("rtk_port_link_get(unit=0, port=1, link=>7) = 0\n"
                                            "rtk_port_link_get(unit=0, port=3, link=>7) = 0\n",
                                            "rtk_port_link_get(unit=0, port=2, link=>7) = 0\n"));
}

TEST_F(GoldenTest, ARecordingMayBeInSeveralFiles) {
  preloaded("record:" + file("calls") + ",rotate:200", "twice");
  ASSERT_THAT(names(), testing::UnorderedElementsAre("calls", "calls.1"));
  for (const std::string name : {"calls", "calls.1"})
    EXPECT_EQ(text_of(file(name)).substr(0, 24), "{\"format\":\"swctl-calls\",");
  EXPECT_THAT(text_of(file("calls.1")), testing::HasSubstr("\"number\":1"));
  EXPECT_THAT(text_of(file("calls")), testing::HasSubstr("\"number\":2"));
}

TEST_F(GoldenTest, OnlyWhatAFilterLetsThrough) {
  const Outcome of_family = preloaded("trace,only:port", "calls");
  EXPECT_EQ(of_family.error,
            "rtk_port_link_get(unit=0, port=3, link=>7) = 0\n"
            "rtk_port_link_get(unit=99, port=40) = -1002 (no such port on the unit)\n"
            "rtk_port_phyAutoNegoAbility_set(unit=1, port=-1, ability=0xf0000000) = 0\n");
  const Outcome of_port = preloaded("trace,port:3,port:40,only:*_get", "calls");
  EXPECT_EQ(of_port.error,
            "rtk_port_link_get(unit=0, port=3, link=>7) = 0\n"
            "rtk_port_link_get(unit=99, port=40) = -1002 (no such port on the unit)\n");
}

}  // namespace
