// SPDX-License-Identifier: MIT
#include "run/options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace swsh {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Settings settings_of(std::vector<std::string> words) {
  words.insert(words.begin(), "swctl");
  std::vector<char *> pointers;
  for (std::string &word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return read_options(static_cast<int>(words.size()), pointers.data());
}

std::string fault_of(const std::vector<std::string> &words) {
  const Settings settings = settings_of(words);
  return settings.fault ? fault_line(*settings.fault) : "";
}

TEST(Options, EchoTheStatusOfText) {
  EXPECT_TRUE(settings_of({"-echo-status"}).style().echo_status);
  EXPECT_FALSE(settings_of({}).style().echo_status);
  EXPECT_EQ(fault_of({"-echo-status", "-j"}),
            "option \"-echo-status\" beside -json: a batch in JSON has each status");
  EXPECT_NE(fault_of({"-p", "--echo-status"}), "");
}

TEST(Options, DefaultToATableOfUnitZero) {
  const Settings settings = settings_of({"port", "show"});
  EXPECT_EQ(settings.style().format, Format::human);
  EXPECT_EQ(settings.unit, 0u);
  EXPECT_FALSE(settings.batch || settings.force || settings.help || settings.version);
  EXPECT_THAT(settings.words, ElementsAre("port", "show"));
}

TEST(Options, HaveALetterANameAndTwoDashes) {
  for (const char *word : {"-j", "-json", "--json", "-js"}) {
    EXPECT_EQ(settings_of({word}).style().format, Format::json) << word;
  }
  for (const char *word : {"-p", "-pretty", "--pretty"}) {
    EXPECT_EQ(settings_of({word}).style().format, Format::pretty) << word;
  }
  for (const char *word : {"-h", "-help", "--help"}) EXPECT_TRUE(settings_of({word}).help) << word;
  for (const char *word : {"-V", "-Version", "--Version"}) EXPECT_TRUE(settings_of({word}).version);
  for (const char *word : {"-force", "--force"}) EXPECT_TRUE(settings_of({word}).force) << word;
}

TEST(Options, MayTakeAValue) {
  for (const std::string word : {"-u", "-unit", "--unit"}) {
    EXPECT_EQ(settings_of({word, "1"}).unit, 1u) << word;
  }
  EXPECT_EQ(settings_of({"-u1"}).unit, 1u);
  EXPECT_EQ(settings_of({"--unit=1"}).unit, 1u);
  EXPECT_EQ(settings_of({"-b", "-"}).batch, "-");
  EXPECT_EQ(settings_of({"-batch", "file"}).batch, "file");
}

TEST(Options, StandAmongTheWordsToo) {
  EXPECT_THAT(settings_of({"port", "-j", "show", "3", "-u", "1"}).words,
              ElementsAre("port", "show", "3"));
  EXPECT_EQ(settings_of({"port", "-j", "show"}).style().format, Format::json);
  EXPECT_EQ(settings_of({"port", "show", "--unit", "1"}).unit, 1u);
  EXPECT_TRUE(settings_of({"port", "--help"}).help);
  EXPECT_EQ(fault_of({"port", "show", "-u"}), "option \"-u\" lacks its value");
  EXPECT_NE(fault_of({"port", "-u", "x"}), "");
}

TEST(Options, AmongTheWordsAreSpelledInFull) {
  EXPECT_THAT(settings_of({"kernel", "send", "2", "-T", "5", "-x", "-js", "-u1"}).words,
              ElementsAre("kernel", "send", "2", "-T", "5", "-x", "-js", "-u1"));
  EXPECT_THAT(settings_of({"port", "-manual", "-complete", "-"}).words,
              ElementsAre("port", "-manual", "-complete", "-"));
}

TEST(Options, EndAtTwoDashes) {
  EXPECT_THAT(settings_of({"--", "-x"}).words, ElementsAre("-x"));
  EXPECT_THAT(settings_of({"--", "port", "-j"}).words, ElementsAre("port", "-j"));
  EXPECT_THAT(settings_of({"mac", "dump", "--", "-j", "--"}).words,
              ElementsAre("mac", "dump", "-j", "--"));
}

TEST(Options, AreNotReadFromALineToComplete) {
  EXPECT_THAT(settings_of({"-complete", "3", "swctl", "port", "-j"}).words,
              ElementsAre("swctl", "port", "-j"));
}

TEST(Options, PrettyIsJsonToo) {
  EXPECT_EQ(settings_of({"-j", "-p"}).style().format, Format::pretty);
  EXPECT_EQ(settings_of({"-p", "-j"}).style().format, Format::pretty);
}

TEST(Options, ThatAreUnknownAreNamed) {
  EXPECT_EQ(fault_of({"-x"}),
            "unknown option \"-x\", expected one of: -json, -pretty, -batch, -force, -atomic, "
            "-may-exist, -no-pager, -echo-status, -unit, -help, -Version");
  EXPECT_EQ(settings_of({"-x"}).fault->culprit, "-x");
  EXPECT_EQ(settings_of({"--yaml"}).fault->culprit, "--yaml");
  EXPECT_THAT(settings_of({"-jsn"}).fault->suggestions, ElementsAre("-json"));
}

TEST(Options, ThatLackTheirValueAreNamed) {
  EXPECT_EQ(fault_of({"-u"}), "option \"-u\" lacks its value");
  EXPECT_EQ(fault_of({"-batch"}), "option \"-batch\" lacks its value");
}

TEST(Options, AUnitIsANumber) {
  EXPECT_EQ(fault_of({"-u", "x"}),
            "bad value \"x\" of -unit: not a number, expected a number from 0");
  EXPECT_EQ(fault_of({"-u", "-1"}),
            "bad value \"-1\" of -unit: out of range, expected a number from 0");
  EXPECT_EQ(fault_of({"-u", "4294967296"}),
            "bad value \"4294967296\" of -unit: out of range, expected a number from 0");
  EXPECT_EQ(settings_of({"-u", "4294967295"}).unit, 4294967295u);
}

TEST(Options, BehindAWrongOneAreStillRead) {
  const Settings settings = settings_of({"-x", "-j"});
  EXPECT_TRUE(settings.fault);
  EXPECT_EQ(settings.style().format, Format::json);
}

TEST(Options, TheFirstFaultCounts) {
  EXPECT_EQ(settings_of({"-x", "-y"}).fault->culprit, "-x");
}

TEST(Options, HaveUsageAndHelp) {
  EXPECT_EQ(option_usage({"unit", 'u', "N", "h"}), "-u, -unit N");
  EXPECT_EQ(option_usage({"force", 0, "", "h"}), "-force");
}

TEST(Options, KnowWhichTakeAValue) {
  for (const char *word : {"-b", "-batch", "--batch", "-u", "--unit"}) {
    EXPECT_TRUE(option_takes_value(word)) << word;
  }
  for (const char *word : {"-j", "-json", "--force", "-V", "-x", "-", "--"}) {
    EXPECT_FALSE(option_takes_value(word)) << word;
  }
}

}  // namespace
}  // namespace swsh
