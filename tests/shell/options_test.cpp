// SPDX-License-Identifier: MIT
#include "run/options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace swsh {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Settings read(std::vector<std::string> words) {
  words.insert(words.begin(), "swctl");
  std::vector<char *> pointers;
  for (std::string &word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return read_options(static_cast<int>(words.size()), pointers.data());
}

std::string fault_of(const std::vector<std::string> &words) {
  const Settings settings = read(words);
  return settings.fault ? fault_line(*settings.fault) : "";
}

TEST(Options, DefaultToATableOfUnitZero) {
  const Settings settings = read({"port", "show"});
  EXPECT_EQ(settings.format(), Format::human);
  EXPECT_EQ(settings.unit, 0u);
  EXPECT_FALSE(settings.batch || settings.force || settings.help || settings.version);
  EXPECT_THAT(settings.words, ElementsAre("port", "show"));
}

TEST(Options, HaveALetterANameAndTwoDashes) {
  for (const char *word : {"-j", "-json", "--json", "-js"}) {
    EXPECT_EQ(read({word}).format(), Format::json) << word;
  }
  for (const char *word : {"-p", "-pretty", "--pretty"}) {
    EXPECT_EQ(read({word}).format(), Format::pretty) << word;
  }
  for (const char *word : {"-h", "-help", "--help"}) EXPECT_TRUE(read({word}).help) << word;
  for (const char *word : {"-V", "-Version", "--Version"}) EXPECT_TRUE(read({word}).version);
  for (const char *word : {"-force", "--force"}) EXPECT_TRUE(read({word}).force) << word;
}

TEST(Options, MayTakeAValue) {
  for (const std::string word : {"-u", "-unit", "--unit"}) {
    EXPECT_EQ(read({word, "1"}).unit, 1u) << word;
  }
  EXPECT_EQ(read({"-u1"}).unit, 1u);
  EXPECT_EQ(read({"--unit=1"}).unit, 1u);
  EXPECT_EQ(read({"-b", "-"}).batch, "-");
  EXPECT_EQ(read({"-batch", "file"}).batch, "file");
}

TEST(Options, EndAtTheFirstOtherWord) {
  EXPECT_THAT(read({"-j", "port", "-p"}).words, ElementsAre("port", "-p"));
  EXPECT_EQ(read({"-j", "port", "-p"}).format(), Format::json);
  EXPECT_THAT(read({"--", "-x"}).words, ElementsAre("-x"));
}

TEST(Options, PrettyIsJsonToo) {
  EXPECT_EQ(read({"-j", "-p"}).format(), Format::pretty);
  EXPECT_EQ(read({"-p", "-j"}).format(), Format::pretty);
}

TEST(Options, ThatAreUnknownAreNamed) {
  EXPECT_EQ(fault_of({"-x"}),
            "unknown option \"-x\", expected one of: -json, -pretty, -batch, -force, -unit, "
            "-help, -Version");
  EXPECT_EQ(read({"-x"}).fault->culprit, "-x");
  EXPECT_EQ(read({"--yaml"}).fault->culprit, "--yaml");
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
  EXPECT_EQ(read({"-u", "4294967295"}).unit, 4294967295u);
}

TEST(Options, BehindAWrongOneAreStillRead) {
  const Settings settings = read({"-x", "-j"});
  EXPECT_TRUE(settings.fault);
  EXPECT_EQ(settings.format(), Format::json);
}

TEST(Options, TheFirstFaultCounts) {
  EXPECT_EQ(read({"-x", "-y"}).fault->culprit, "-x");
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
