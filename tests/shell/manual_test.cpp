// SPDX-License-Identifier: MIT
#include "command/manual.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sample_table.h"

namespace swsh {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string page_of(const Node &command) {
  return manual_sections({.name = "root", .help = "All", .children = {command}});
}

Node tell_command(const std::string &help, const std::string &details = "") {
  return {.name = "tell", .help = help, .details = details, .run = sample_run};
}

TEST(Manual, BeginsWithTheOptionsThatAreNotHidden) {
  const std::string page = manual_sections(sample_table());
  EXPECT_THAT(page, StartsWith(".Sh OPTIONS\n.Bl -tag -width Ds\n"
                               ".It Fl j , json\nAnswer in JSON.\n"));
  EXPECT_THAT(page, HasSubstr(".It Fl b , batch Ar FILE\n"));
  EXPECT_THAT(page, HasSubstr(".It Fl force\n"));
  EXPECT_THAT(page, Not(HasSubstr("complete")));
}

TEST(Manual, ShowsACommandWithItsWords) {
  EXPECT_THAT(manual_sections(sample_table()), HasSubstr(".Sh COMMANDS\n"
                                                         ".Ss fence\n"
                                                         "Fences.\n"
                                                         ".Bl -tag -width Ds\n"
                                                         ".It Xo\n"
                                                         ".Ic fence paint\n"
                                                         ".Ar COLOUR\n"
                                                         ".Op Ar BOARDS\n"
                                                         ".Op Cm coats Ar \\&1-5\n"
                                                         ".Op Cm cover Ar TEXT\n"
                                                         ".Op Cm gloss\n"
                                                         ".Xc\n"
                                                         "Paint a fence.\n"
                                                         "Paint dries by itself.\n"
                                                         ".Bl -tag -width Ds -compact\n"
                                                         ".It Ar COLOUR\n"
                                                         "Colour of the paint.\n"
                                                         ".Bl -tag -width Ds -compact\n"
                                                         ".It Cm \\&red\n"
                                                         "Like a rose.\n"
                                                         ".It Cm green\n"
                                                         "Like grass.\n"
                                                         ".El\n"
                                                         ".It Ar BOARDS\n"
                                                         "Boards to paint: a list of numbers 0-99 "
                                                         "such as 1-4,7.\n"));
}

TEST(Manual, HasEveryObjectEvenOneThatIsACommand) {
  EXPECT_THAT(manual_sections(sample_table()), HasSubstr(".Ss gatepost\n"
                                                         ".Bl -tag -width Ds\n"
                                                         ".It Xo\n"
                                                         ".Ic gatepost\n"
                                                         ".Xc\n"
                                                         "Count the posts.\n"
                                                         ".El\n"));
}

TEST(Manual, NamesTheWordsThatLeadToCommands) {
  const Node inner = {.name = "inner", .help = "Inside", .children = {tell_command("Tell")}};
  EXPECT_THAT(page_of({.name = "outer", .help = "Outside", .children = {inner}}),
              HasSubstr(".It Ic outer inner Ar COMMAND\nInside.\n.It Xo\n.Ic outer inner tell\n"));
}

TEST(Manual, TextIsNotTakenForMacros) {
  EXPECT_THAT(page_of(tell_command("Tell", "First. .Sh is a word.\n'no' \\ too\n")),
              HasSubstr("Tell.\nFirst.\n\\&.Sh is a word.\n\\&'no' \\e too\n"));
}

}  // namespace
}  // namespace swsh
