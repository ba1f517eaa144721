// SPDX-License-Identifier: MIT
#include "command/walker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sample_table.h"

namespace swsh {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Words = std::vector<std::string>;

class Walking : public testing::Test {
 protected:
  Walk walk_words(const Words &words) { return walk(table_, words); }

  // The line that a wrong or missing word gives; empty for a good command.
  std::string complaint(const Words &words) {
    const Walk found = walk_words(words);
    if (found.wrong) return fault_line(*found.wrong);
    return found.missing ? fault_line(*found.missing) : "";
  }

  Words expected(const Words &words) {
    Words all;
    for (const Expected &each : walk_words(words).expected) all.push_back(each.word);
    return all;
  }

  const Node table_ = sample_table();
};

TEST_F(Walking, ACompleteCommandRuns) {
  const Walk found = walk_words({"fence", "paint", "green", "3-5,1", "coats", "2", "gloss"});
  ASSERT_TRUE(found.runnable());
  EXPECT_EQ(found.node->name, "paint");
  EXPECT_EQ(found.arguments.number("COLOUR"), 2);
  EXPECT_EQ(found.arguments.word("COLOUR"), "green");
  EXPECT_THAT(found.arguments.numbers("BOARDS"), ElementsAre(1, 3, 4, 5));
  EXPECT_EQ(found.arguments.number("coats"), 2);
  EXPECT_TRUE(found.arguments.has("gloss"));
  EXPECT_FALSE(found.arguments.has("cover"));
}

TEST_F(Walking, KeywordsStandInAnyOrder) {
  const Walk found = walk_words({"fence", "paint", "red", "gloss", "cover", "old", "coats", "1"});
  ASSERT_TRUE(found.runnable());
  EXPECT_EQ(found.arguments.word("cover"), "old");
  EXPECT_EQ(found.arguments.number("coats"), 1);
}

TEST_F(Walking, AnOptionalPlaceMayBeLeftOut) {
  const Walk found = walk_words({"fence", "paint", "red", "gloss"});
  ASSERT_TRUE(found.runnable());
  EXPECT_FALSE(found.arguments.has("BOARDS"));
}

TEST_F(Walking, AbbreviationsAreWrittenOut) {
  const Walk found = walk_words({"f", "p", "red", "coa", "4"});
  ASSERT_TRUE(found.runnable());
  EXPECT_THAT(found.path, ElementsAre("fence", "paint", "red", "coats", "4"));
}

TEST_F(Walking, AWordSpelledInFullIsNotAmbiguous) {
  const Walk found = walk_words({"gate", "open", "slowly"});
  EXPECT_TRUE(found.runnable());
  EXPECT_EQ(complaint({"gat"}), "ambiguous word \"gat\", expected one of: gate, gatepost");
}

TEST_F(Walking, AnAmbiguousKeywordListsItsCandidates) {
  EXPECT_EQ(complaint({"fence", "paint", "red", "co", "4"}),
            "fence paint red: ambiguous word \"co\", expected one of: coats, cover");
}

TEST_F(Walking, AKeywordTakenNoLongerMakesAnAbbreviationAmbiguous) {
  EXPECT_TRUE(walk_words({"fence", "paint", "red", "cover", "x", "co", "4"}).runnable());
}

TEST_F(Walking, AnEmptyWordAbbreviatesNothing) {
  EXPECT_EQ(complaint({""}), "unknown word \"\", expected one of: fence, gate, gatepost, help");
}

TEST_F(Walking, AnUnknownWordNamesItselfAndWhatWasExpected) {
  EXPECT_EQ(complaint({"fense"}),
            "unknown word \"fense\" (did you mean \"fence\"?), expected one of: fence, gate, "
            "gatepost, help");
  EXPECT_EQ(
      complaint({"fence", "paint", "gren"}),
      "fence paint: bad value \"gren\" (did you mean \"green\"?), expected one of: red, green");
  EXPECT_EQ(complaint({"fence", "burn"}),
            "fence: unknown word \"burn\", expected one of: paint, sell, help");
  EXPECT_EQ(complaint({"gate", "open", "fast"}),
            "gate open: unknown word \"fast\", expected one of: slowly, port");
}

TEST_F(Walking, AWordBehindTheEndIsUnexpected) {
  EXPECT_EQ(complaint({"gatepost", "now"}),
            "gatepost: unexpected word \"now\", expected end of command");
  EXPECT_EQ(complaint({"gate", "open", "slowly", "port", "1", "x"}),
            "gate open slowly port 1: unexpected word \"x\", expected end of command");
}

TEST_F(Walking, AKeywordGivenTwiceIsSaidSo) {
  EXPECT_EQ(complaint({"gate", "open", "slowly", "slowly"}),
            "gate open slowly: keyword \"slowly\" is there twice, expected port");
}

TEST_F(Walking, ABadValueSaysWhatItMayBe) {
  EXPECT_EQ(complaint({"fence", "paint", "blue"}),
            "fence paint: bad value \"blue\", expected one of: red, green");
  EXPECT_EQ(complaint({"fence", "paint", "red", "coats", "6"}),
            "fence paint red coats: bad value \"6\", expected a number 1-5 layers");
  EXPECT_EQ(complaint({"gate", "open", "port", "27"}),
            "gate open port: bad value \"27\", expected an interface number 0-26");
}

TEST_F(Walking, ABadValueInAnOptionalPlaceAlsoOffersTheKeywords) {
  EXPECT_EQ(complaint({"fence", "paint", "red", "1,100"}),
            "fence paint red: bad value \"1,100\": \"100\" is out of range, expected one of: a "
            "list of numbers 0-99 such as 1-4,7, coats, cover, gloss");
}

TEST_F(Walking, ValuesAreNotAbbreviated) {
  EXPECT_EQ(complaint({"fence", "paint", "gre"}),
            "fence paint: bad value \"gre\", expected one of: red, green");
}

TEST_F(Walking, TheCulpritIsTheWordItself) {
  const Walk found = walk_words({"fence", "paint", "blue", "gloss"});
  ASSERT_TRUE(found.wrong);
  EXPECT_EQ(found.wrong->culprit, "blue");
  EXPECT_EQ(found.wrong->status, kWrongUsage);
  EXPECT_THAT(found.wrong->expected, ElementsAre("red", "green"));
  EXPECT_FALSE(found.runnable());
}

TEST_F(Walking, WhatIsMissingIsNamed) {
  EXPECT_EQ(complaint({}), "missing word, expected one of: fence, gate, gatepost, help");
  EXPECT_EQ(complaint({"fence"}), "fence: missing word, expected one of: paint, sell, help");
  EXPECT_EQ(complaint({"fence", "paint"}),
            "fence paint: missing COLOUR, expected one of: red, green");
  EXPECT_EQ(complaint({"fence", "paint", "red", "coats"}),
            "fence paint red coats: missing value, expected a number 1-5 layers");
  EXPECT_EQ(complaint({"fence", "sell", "to", "you"}),
            "fence sell to you: missing keyword, expected price");
  EXPECT_EQ(complaint({"gate", "open"}),
            "gate open: missing keyword, expected one of: slowly, port");
}

TEST_F(Walking, AMissingWordHasNoCulprit) {
  const Walk found = walk_words({"fence"});
  ASSERT_TRUE(found.missing);
  EXPECT_FALSE(found.missing->culprit);
  EXPECT_FALSE(found.runnable());
}

TEST_F(Walking, EveryPositionKnowsWhatMayFollow) {
  EXPECT_THAT(expected({}), ElementsAre("fence", "gate", "gatepost", "help"));
  EXPECT_THAT(expected({"fence"}), ElementsAre("paint", "sell", "help"));
  EXPECT_THAT(expected({"fence", "paint"}), ElementsAre("red", "green"));
  EXPECT_THAT(expected({"fence", "paint", "red"}),
              ElementsAre("BOARDS", "coats", "cover", "gloss"));
  EXPECT_THAT(expected({"fence", "paint", "red", "1"}), ElementsAre("coats", "cover", "gloss"));
  EXPECT_THAT(expected({"fence", "paint", "red", "gloss"}), ElementsAre("coats", "cover"));
  EXPECT_THAT(expected({"fence", "paint", "red", "coats"}), ElementsAre("1-5"));
  EXPECT_THAT(expected({"gatepost"}), IsEmpty());
}

TEST_F(Walking, PlaceHoldersAreNotLiteral) {
  const Walk found = walk_words({"fence", "paint", "red"});
  ASSERT_EQ(found.expected.size(), 4u);
  EXPECT_FALSE(found.expected[0].literal);
  EXPECT_EQ(found.expected[0].help, "Boards to paint");
  EXPECT_TRUE(found.expected[1].literal);
  EXPECT_EQ(found.expected[1].help, "How thick");
}

TEST_F(Walking, HelpIsUnderstoodBehindEveryWord) {
  for (const Words &words :
       {Words{"help"}, Words{"h"}, Words{"fence", "help"}, Words{"fence", "paint", "help"},
        Words{"fence", "paint", "red", "help"}, Words{"gate", "open", "slowly", "help"},
        Words{"gatepost", "help"}}) {
    const Walk found = walk_words(words);
    EXPECT_TRUE(found.help) << words.back();
    EXPECT_FALSE(found.wrong || found.missing || found.runnable());
  }
}

TEST_F(Walking, HelpAsAnOptionIsUnderstoodForAValueToo) {
  for (const std::string option : {"-h", "-help", "--help"}) {
    for (const Words &words : {Words{}, Words{"fence"}, Words{"fence", "paint", "red", "coats"},
                               Words{"gate", "call"}}) {
      Words asking = words;
      asking.push_back(option);
      EXPECT_TRUE(walk_words(asking).help) << words.size();
    }
  }
}

TEST_F(Walking, WordsBehindHelpAreNotRead) {
  const Walk found = walk_words({"fence", "help", "nonsense"});
  EXPECT_TRUE(found.help);
  EXPECT_EQ(found.node->name, "fence");
}

TEST_F(Walking, HelpMayBeATextOrAValue) {
  EXPECT_EQ(walk_words({"gate", "call", "help"}).arguments.word("NAME"), "help");
  EXPECT_EQ(walk_words({"fence", "paint", "red", "cover", "help"}).arguments.word("cover"), "help");
}

TEST_F(Walking, NothingIsReadBehindAWrongWord) {
  const Walk found = walk_words({"fence", "burn", "help"});
  EXPECT_FALSE(found.help);
  ASSERT_TRUE(found.wrong);
  EXPECT_EQ(found.wrong->culprit, "burn");
}

}  // namespace
}  // namespace swsh
