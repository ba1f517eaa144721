// SPDX-License-Identifier: MIT
#include "run/words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace swsh {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> words(std::string_view line) {
  const Line split = split_words(line);
  EXPECT_EQ(split.fault, "") << line;
  return split.words;
}

TEST(Words, AreSeparatedByBlanks) {
  EXPECT_THAT(words("port show"), ElementsAre("port", "show"));
  EXPECT_THAT(words("  port \t show\r"), ElementsAre("port", "show"));
  EXPECT_THAT(words(""), IsEmpty());
  EXPECT_THAT(words(" \t"), IsEmpty());
}

TEST(Words, AreHeldTogetherByQuotes) {
  EXPECT_THAT(words("a 'b c' \"d e\""), ElementsAre("a", "b c", "d e"));
  EXPECT_THAT(words("a'b'\"c\"d"), ElementsAre("abcd"));
  EXPECT_THAT(words("'' \"\""), ElementsAre("", ""));
  EXPECT_THAT(words("'\"' \"'\""), ElementsAre("\"", "'"));
}

TEST(Words, TakeTheCharacterBehindABackslash) {
  EXPECT_THAT(words("a\\ b"), ElementsAre("a b"));
  EXPECT_THAT(words("\\\"a \"\\\"b\""), ElementsAre("\"a", "\"b"));
  EXPECT_THAT(words("\\#a"), ElementsAre("#a"));
  EXPECT_THAT(words("'a\\'"), ElementsAre("a\\"));
}

TEST(Words, EndAtAComment) {
  EXPECT_THAT(words("# all"), IsEmpty());
  EXPECT_THAT(words("port # show"), ElementsAre("port"));
  EXPECT_THAT(words("port#1 '#2'"), ElementsAre("port#1", "#2"));
  EXPECT_THAT(words("port # it's"), ElementsAre("port"));
}

TEST(Words, AnOpenQuoteIsAFault) {
  EXPECT_EQ(split_words("port 'show").fault, "a quote ' is not closed");
  EXPECT_EQ(split_words("port \"show'").fault, "a quote \" is not closed");
}

TEST(Words, KnowWhetherTheNextWordIsNew) {
  EXPECT_TRUE(split_words("").at_new_word);
  EXPECT_TRUE(split_words("port ").at_new_word);
  EXPECT_FALSE(split_words("port").at_new_word);
  EXPECT_FALSE(split_words("port ''").at_new_word);
}

bool is_continued(std::string_view line) {
  return Splitter().add(line);
}

TEST(Words, ContinueBehindABackslashAtTheEnd) {
  EXPECT_TRUE(is_continued("port \\"));
  EXPECT_THAT(words("port \\"), ElementsAre("port"));
  EXPECT_FALSE(is_continued("port \\\\"));
  EXPECT_THAT(words("port \\\\"), ElementsAre("port", "\\"));
  EXPECT_FALSE(is_continued("port"));
  EXPECT_TRUE(is_continued("\"a\\"));
  EXPECT_FALSE(is_continued("'a\\"));
}

TEST(Words, ACommentIsNotContinued) {
  EXPECT_FALSE(is_continued("# note \\"));
}

TEST(Words, OfSeveralLinesAreOneCommand) {
  Splitter splitter;
  EXPECT_TRUE(splitter.add("port sh\\"));
  EXPECT_TRUE(splitter.add("ow 'a b\\'  \\"));
  EXPECT_TRUE(splitter.add("\"c\\"));
  EXPECT_FALSE(splitter.add(" d\" # all"));
  EXPECT_THAT(splitter.finish().words, ElementsAre("port", "show", "a b\\", "c d"));
}

TEST(Words, AreTheSameInEveryLocale) {
  // Latin-1 has a blank at 0xa0, UTF-8 a part of a character.
  EXPECT_THAT(words("1\xc2\xa0"
                    "4 1\xa0"
                    "4"),
              ElementsAre("1\xc2\xa0"
                          "4",
                          "1\xa0"
                          "4"));
}

}  // namespace
}  // namespace swsh
