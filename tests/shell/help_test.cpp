// SPDX-License-Identifier: MIT
#include "command/help.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "output/writer.h"
#include "sample_table.h"

namespace swsh {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr size_t kWide = 100;
constexpr size_t kNarrow = 40;

TEST(Usage, ShowsWhatIsOptional) {
  EXPECT_EQ(usage_line(paint_command(), {"fence", "paint"}),
            "swctl fence paint COLOUR [BOARDS] [coats 1-5] [cover TEXT] [gloss]");
  EXPECT_EQ(usage_line(sell_command(), {"fence", "sell"}),
            "swctl fence sell price 0-65535 [to TEXT]");
}

TEST(Usage, OfAnObjectAndOfAll) {
  const Node table = sample_table();
  EXPECT_EQ(usage_line(table.children[0], {"fence"}), "swctl fence COMMAND ...");
  EXPECT_EQ(usage_line(table, {}), "swctl [OPTIONS] OBJECT COMMAND [KEYWORD VALUE]...");
}

TEST(Help, OfACommandExplainsItsWords) {
  EXPECT_EQ(help_answer(paint_command(), {"fence", "paint"}, kWide).text,
            "Usage: swctl fence paint COLOUR [BOARDS] [coats 1-5] [cover TEXT] [gloss]\n"
            "\n"
            "Paint a fence.\n"
            "Paint dries by itself.\n"
            "\n"
            "  COLOUR      Colour of the paint\n"
            "    red       Like a rose\n"
            "    green     Like grass\n"
            "  BOARDS      Boards to paint: a list of numbers 0-99 such as 1-4,7\n"
            "  coats 1-5   How thick: a number 1-5 layers\n"
            "  cover TEXT  What lies below: a text\n"
            "  gloss       Shiny\n");
}

TEST(Help, IsWrappedToItsWidth) {
  EXPECT_EQ(help_answer(paint_command(), {"fence", "paint"}, kNarrow).text,
            "Usage: swctl fence paint COLOUR [BOARDS]\n"
            "    [coats 1-5] [cover TEXT] [gloss]\n"
            "\n"
            "Paint a fence.\n"
            "Paint dries by itself.\n"
            "\n"
            "  COLOUR      Colour of the paint\n"
            "    red       Like a rose\n"
            "    green     Like grass\n"
            "  BOARDS      Boards to paint: a list of\n"
            "              numbers 0-99 such as 1-4,7\n"
            "  coats 1-5   How thick: a number 1-5\n"
            "              layers\n"
            "  cover TEXT  What lies below: a text\n"
            "  gloss       Shiny\n");
  EXPECT_EQ(expected_text({{"red", "Like a rose in the middle of summer", true}}, kNarrow),
            "  red  Like a rose in the middle of\n       summer\n");
}

TEST(Help, GivesLongWordsALineOfTheirOwn) {
  EXPECT_EQ(expected_text(
                {{"red", "Like a rose", true}, {"a|word|with|many|choices", "Something", false}},
                kNarrow),
            "  red                   Like a rose\n"
            "  a|word|with|many|choices\n"
            "                        Something\n");
}

TEST(Help, OfAnObjectListsItsCommands) {
  const Answer answer = help_answer(sample_table().children[0], {"fence"}, kWide);
  EXPECT_THAT(answer.text, HasSubstr("Commands:\n  paint  Paint a fence\n  sell   Sell a fence\n"));
  EXPECT_THAT(answer.text, Not(HasSubstr("Options")));
}

TEST(Help, OfTheProgramListsObjectsAndOptions) {
  const Answer answer = help_answer(sample_table(), {}, kWide);
  EXPECT_THAT(answer.text, HasSubstr("Objects:\n  fence     Fences\n"));
  EXPECT_THAT(answer.text, HasSubstr("  -u, -unit N      "));
  EXPECT_THAT(answer.text, Not(HasSubstr("complete INDEX")));
}

TEST(Help, OfACommandWithoutWordsIsShort) {
  EXPECT_EQ(help_answer(sample_table().children[2], {"gatepost"}, kWide).text,
            "Usage: swctl gatepost\n\nCount the posts.\n");
}

TEST(Help, IsARecordInJson) {
  EXPECT_EQ(answer_text(help_answer(sell_command(), {"fence", "sell"}, kNarrow), Format::json),
            R"([{"usage":"swctl fence sell price 0-65535 [to TEXT]","help":"Sell a fence","words":)"
            R"([{"word":"price","value":"0-65535","required":true,)"
            R"("help":"How much: a number 0-65535"},)"
            R"({"word":"to","value":"TEXT","required":false,"help":"To whom: a text"}]}])"
            "\n");
}

TEST(Help, AtTheKeyListsWhatMayFollow) {
  EXPECT_EQ(expected_text({{"red", "Like a rose", true}, {"BOARDS", "Boards", false}}, kWide),
            "  red     Like a rose\n  BOARDS  Boards\n");
  EXPECT_EQ(expected_text({}, kWide), "  end of command\n");
}

}  // namespace
}  // namespace swsh
