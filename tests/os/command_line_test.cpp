// SPDX-License-Identifier: MIT
#include "os/command_line.h"

#include <array>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

// A program with options of every type and two commands.
struct Program {
  os::Command command{"Tries the words of a command line", "prog"};
  std::string unit = "0";
  std::optional<std::string> image;
  std::vector<std::string> rules;
  int32_t level = 3;
  uint32_t count = 0;
  double seconds = 0;
  bool quiet = false;
  std::vector<std::string> ports;
  std::string order;

  os::Command show = command.add_subcommand("show", "Shows ports");
  os::Command link = command.add_subcommand("link", "Changes links");
  os::Command up = link.add_subcommand("up", "Plugs a cable in");
  os::Command down = link.add_subcommand("down", "Pulls a cable out");

  Program() {
    command.add_option("-u,--unit", unit, "Unit");
    command.add_option("--image", image, "Image").shown_as("FILE");
    command.add_option("--rule", rules, "Rule").one_each();
    command.add_option("--level", level, "Level").within(-1, 7);
    command.add_option("--count", count, "Count");
    command.add_option("--seconds", seconds, "Seconds").within(0.5, 10.0);
    command.add_flag("-q,--quiet", quiet, "Says nothing");
    command.add_version("prog 1.2");
    command.footer("The end.");
    show.add_option("PORTS", ports, "Ports").required();
    show.callback([this] { order += "show "; });
    link.require_subcommand();
    up.callback([this] { order += "up "; });
  }

  bool parse(std::vector<std::string> words) {
    words.insert(words.begin(), "prog");
    std::vector<char *> argv;
    for (std::string &word : words) argv.push_back(word.data());
    return command.parse(static_cast<int>(argv.size()), argv.data());
  }
  os::WrongLine fault_of(const std::vector<std::string> &words) {
    try {
      parse(words);
    } catch (const os::WrongLine &fault) {
      return fault;
    }
    ADD_FAILURE() << "the words are taken";
    return os::WrongLine("");
  }
};

TEST(CommandLine, OptionsFillWhatTheyAreGiven) {
  Program program;
  EXPECT_TRUE(program.parse({"-u", "1", "--image=a b", "--level", "-1", "--count", "4294967295",
                             "--seconds", "0.5", "-q"}));
  EXPECT_EQ(program.unit, "1");
  EXPECT_EQ(program.image, "a b");
  EXPECT_EQ(program.level, -1);
  EXPECT_EQ(program.count, 4294967295u);
  EXPECT_EQ(program.seconds, 0.5);
  EXPECT_TRUE(program.quiet);
}

TEST(CommandLine, WhatIsNotGivenStays) {
  Program program;
  EXPECT_TRUE(program.parse({}));
  EXPECT_EQ(program.unit, "0");
  EXPECT_EQ(program.image, std::nullopt);
  EXPECT_EQ(program.level, 3);
  EXPECT_FALSE(program.quiet);
  EXPECT_EQ(program.order, "");
}

TEST(CommandLine, AnOptionOfOneWordLeavesTheNextToTheCommand) {
  Program program;
  EXPECT_TRUE(program.parse({"--rule", "a", "--rule", "b", "show", "3", "5-7"}));
  EXPECT_THAT(program.rules, ElementsAre("a", "b"));
  EXPECT_THAT(program.ports, ElementsAre("3", "5-7"));
  EXPECT_EQ(program.order, "show ");
  EXPECT_TRUE(program.command.got(program.show));
  EXPECT_FALSE(program.command.got(program.link));
}

TEST(CommandLine, TheEndsOfARange) {
  for (const auto &[option, inside, outside] :
       {std::array{"--level", "7", "8"}, std::array{"--level", "-1", "-2"},
        std::array{"--seconds", "10", "10.01"}, std::array{"--seconds", "0.5", "0.49"}}) {
    EXPECT_TRUE(Program().parse({option, inside})) << option << ' ' << inside;
    EXPECT_THAT(Program().fault_of({option, outside}).what(), HasSubstr(outside));
  }
}

TEST(CommandLine, AFaultNamesTheCulprit) {
  EXPECT_THAT(Program().fault_of({"--level", "high"}).what(), HasSubstr("high"));
  EXPECT_THAT(Program().fault_of({"--count", "-1"}).what(), HasSubstr("-1"));
  EXPECT_THAT(Program().fault_of({"--volume", "3"}).what(), HasSubstr("--volume"));
  EXPECT_THAT(Program().fault_of({"--unit"}).what(), HasSubstr("--unit"));
  EXPECT_THAT(Program().fault_of({"shwo"}).what(), HasSubstr("shwo"));
}

TEST(CommandLine, WhatIsMissingIsSaidApart) {
  const os::WrongLine ports = Program().fault_of({"show"});
  EXPECT_TRUE(ports.missing);
  EXPECT_THAT(ports.what(), HasSubstr("PORTS"));
  EXPECT_TRUE(Program().fault_of({"link"}).missing);
}

TEST(CommandLine, TheCommandsThatMayFollow) {
  Program top;
  EXPECT_TRUE(top.parse({}));
  EXPECT_THAT(top.command.expected_subcommands(), ElementsAre("show", "link"));
  Program inner;
  inner.fault_of({"link"});
  EXPECT_THAT(inner.command.expected_subcommands(), ElementsAre("up", "down"));
}

TEST(CommandLine, WhatAPrefixCommandDoesNotKnowIsLeft) {
  Program program;
  os::Command run = program.command.add_subcommand("run", "Runs a program");
  run.prefix_command();
  EXPECT_TRUE(program.parse({"-q", "run", "ls", "-q", "--unit", "7"}));
  EXPECT_THAT(run.remaining(), ElementsAre("ls", "-q", "--unit", "7"));
  EXPECT_EQ(program.unit, "0");
  EXPECT_THAT(program.command.remaining_in_all(), ElementsAre("ls", "-q", "--unit", "7"));
}

TEST(CommandLine, OptionsAfterTheCommandIfTheyMay) {
  Program refusing;
  EXPECT_THAT(refusing.fault_of({"link", "up", "-q"}).what(), HasSubstr("-q"));
  Program program;
  program.link.fallthrough(true);
  program.up.fallthrough(true);
  EXPECT_TRUE(program.parse({"link", "up", "-q"}));
  EXPECT_TRUE(program.quiet);
  EXPECT_EQ(program.order, "up ");
}

TEST(CommandLine, HelpAndVersionArePrinted) {
  testing::internal::CaptureStdout();
  EXPECT_FALSE(Program().parse({"--version"}));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "prog 1.2\n");
  testing::internal::CaptureStdout();
  EXPECT_FALSE(Program().parse({"--help"}));
  const std::string help = testing::internal::GetCapturedStdout();
  EXPECT_THAT(help, HasSubstr("--image FILE"));
  EXPECT_THAT(help, HasSubstr("The end."));
  EXPECT_THAT(Program().command.whole_help(), HasSubstr("Pulls a cable out"));
}

// The status and what is said of each way to end.
int end_with(const std::function<int()> &run, std::string &said) {
  Program program;
  std::string name = "prog";
  char *argv[] = {name.data(), nullptr};
  testing::internal::CaptureStderr();
  const int status = os::run_program_main(program.command, 1, argv, run);
  said = testing::internal::GetCapturedStderr();
  return status;
}

TEST(CommandLine, TheEndOfAProgram) {
  std::string said;
  EXPECT_EQ(end_with([] { return 5; }, said), 5);
  EXPECT_EQ(said, "");
  EXPECT_EQ(end_with([]() -> int { throw os::Refused("the chip says no"); }, said), 2);
  EXPECT_EQ(said, "prog: the chip says no\n");
  EXPECT_EQ(end_with([]() -> int { throw std::invalid_argument("port 99"); }, said), 1);
  EXPECT_EQ(said, "prog: port 99\n");
}

}  // namespace
