// SPDX-License-Identifier: MIT
#include "command/completion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sample_table.h"

namespace swsh {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> words_of(const std::vector<Expected> &expected) {
  std::vector<std::string> words;
  for (const Expected &each : expected) words.push_back(each.word);
  return words;
}

class Completing : public testing::Test {
 protected:
  std::vector<std::string> complete(const std::vector<std::string> &words,
                                    const std::string &prefix) {
    return words_of(completions(table_, words, prefix));
  }
  // The last word of a whole line.
  std::vector<std::string> complete_line(std::vector<std::string> words) {
    words.insert(words.begin(), "swctl");
    return words_of(line_completions(table_, words, words.size() - 1));
  }

  const Node table_ = sample_table();
};

TEST_F(Completing, OffersTheWordsThatMayFollow) {
  EXPECT_THAT(complete({}, ""), ElementsAre("fence", "gate", "gatepost", "help"));
  EXPECT_THAT(complete({"fence"}, ""), ElementsAre("paint", "sell", "help"));
  EXPECT_THAT(complete({"fence", "paint"}, ""), ElementsAre("red", "green"));
}

TEST_F(Completing, OffersOnlyWhatBeginsAlike) {
  EXPECT_THAT(complete({}, "ga"), ElementsAre("gate", "gatepost"));
  EXPECT_THAT(complete({"fence", "paint"}, "g"), ElementsAre("green"));
  EXPECT_THAT(complete({}, "x"), IsEmpty());
}

TEST_F(Completing, OffersNoPlaceHolders) {
  EXPECT_THAT(complete({"fence", "paint", "red"}, ""), ElementsAre("coats", "cover", "gloss"));
  EXPECT_THAT(complete({"fence", "paint", "red", "coats"}, ""), IsEmpty());
}

TEST_F(Completing, OffersNoKeywordTwice) {
  EXPECT_THAT(complete({"fence", "paint", "red", "gloss"}, ""), ElementsAre("coats", "cover"));
}

TEST_F(Completing, OffersNothingBehindAWrongWordOrHelp) {
  EXPECT_THAT(complete({"wall"}, ""), IsEmpty());
  EXPECT_THAT(complete({"fence", "paint", "blue"}, ""), IsEmpty());
  EXPECT_THAT(complete({"fence", "help"}, ""), IsEmpty());
}

TEST_F(Completing, SaysWhatEachWordIsFor) {
  const auto found = line_completions(table_, {"swctl", "fence", "p"}, 2);
  ASSERT_EQ(found.size(), 1);
  EXPECT_EQ(found[0].help, "Paint a fence");
  for (const Expected &option : line_completions(table_, {"swctl", "-"}, 1)) {
    EXPECT_FALSE(option.help.empty()) << option.word;
  }
}

TEST_F(Completing, PassesOverOptions) {
  EXPECT_THAT(complete_line({"-j", "fence", "s"}), ElementsAre("sell"));
  EXPECT_THAT(complete_line({"-u", "1", "-p", "fence", "s"}), ElementsAre("sell"));
}

TEST_F(Completing, OffersOptionsInFrontOfTheCommand) {
  EXPECT_THAT(complete_line({"-"}),
              ElementsAre("-json", "-pretty", "-batch", "-force", "-atomic", "-may-exist",
                          "-no-pager", "-echo-status", "-unit", "-help", "-Version"));
  EXPECT_THAT(complete_line({"-j", "--f"}), ElementsAre("--force"));
}

TEST_F(Completing, OffersOptionsAmongTheWords) {
  EXPECT_THAT(complete_line({"fence", "--f"}), ElementsAre("--force"));
  EXPECT_THAT(complete_line({"fence", "-j", "s"}), ElementsAre("sell"));
  EXPECT_THAT(complete_line({"fence", "-u", "1", "s"}), ElementsAre("sell"));
  EXPECT_THAT(complete_line({"fence", "-u", ""}), IsEmpty());
}

TEST_F(Completing, LeavesTheValueOfAnOptionToOthers) {
  EXPECT_THAT(complete_line({"-b", ""}), IsEmpty());
  EXPECT_THAT(complete_line({"-unit", ""}), IsEmpty());
}

TEST_F(Completing, ReadsNothingBehindTheWord) {
  EXPECT_THAT(words_of(line_completions(table_, {"swctl", "fe", "paint"}, 1)),
              ElementsAre("fence"));
}

TEST_F(Completing, OffersNothingForTheProgramItself) {
  EXPECT_THAT(line_completions(table_, {"swctl"}, 0), IsEmpty());
}

TEST_F(Completing, TakesAnIndexBehindTheLastWord) {
  EXPECT_THAT(words_of(line_completions(table_, {"swctl", "fence"}, 2)),
              ElementsAre("paint", "sell", "help"));
}

}  // namespace
}  // namespace swsh
