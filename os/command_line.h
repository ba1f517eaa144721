// SPDX-License-Identifier: MIT
// How the programs begin and end: the words of a command line, what they fill, and the
// exit status.
#ifndef SWCTL_OS_COMMAND_LINE_H
#define SWCTL_OS_COMMAND_LINE_H

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

// CLI11 is all templates, which every file that includes it compiles again; so one file
// does, and the others have the few types that options fill.
namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace os {

// What is no fault of the words on the command line.
struct Refused : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A fault of the words; what() names the culprit.
struct WrongLine : std::runtime_error {
  using std::runtime_error::runtime_error;
  bool missing = false;  // a word that must be given was not
};

// An option or a word of a command. A handle: its Command owns what it refers to.
class Option {
 public:
  explicit Option(CLI::Option &option) : option_(&option) {}
  Option &required();
  Option &within(int least, int most);
  Option &within(double least, double most);
  // One word each time that the option is given, instead of all that follow.
  Option &one_each();
  // What help prints in place of the type of the value.
  Option &shown_as(const std::string &text);

 private:
  CLI::Option *option_;
};

// A program, or a command of it: what may follow its name. A handle: copies are the same
// command, and the program's own must live until the words are read. What options fill
// must live as long.
class Command {
 public:
  Command(const std::string &purpose, const std::string &name);

  Command add_subcommand(const std::string &name, const std::string &purpose);
  // Names are "--long", "-s,--long", or a name for a word by its place.
  Option add_option(const std::string &names, std::string &value, const std::string &purpose);
  Option add_option(const std::string &names, std::optional<std::string> &value,
                    const std::string &purpose);
  Option add_option(const std::string &names, std::vector<std::string> &value,
                    const std::string &purpose);
  Option add_option(const std::string &names, int32_t &value, const std::string &purpose);
  Option add_option(const std::string &names, uint32_t &value, const std::string &purpose);
  Option add_option(const std::string &names, double &value, const std::string &purpose);
  void add_flag(const std::string &names, bool &value, const std::string &purpose);
  void add_version(const std::string &text);
  void footer(const std::string &text);

  // One of the commands in it has to be given.
  void require_subcommand();
  // Whether options of the command around it may follow this one's words.
  void fallthrough(bool may);
  // What this command does not know, and all after that, is left to remaining().
  void prefix_command();
  // Called when the words of this command were read.
  void callback(std::function<void()> call);

  // After the words were read.
  bool got(const Command &subcommand) const;
  // Words that no command or option took; of the commands in it too.
  std::vector<std::string> remaining() const;
  std::vector<std::string> remaining_in_all() const;
  // The commands that the last given one has.
  std::vector<std::string> expected_subcommands() const;

  std::string name() const;
  // Help of this and every command in it.
  std::string whole_help() const;

  // Reads the words; false if they asked for help or the version, which is printed.
  // Throws WrongLine.
  bool parse(int argc, char **argv);

 private:
  explicit Command(std::shared_ptr<CLI::App> app) : app_(std::move(app)) {}
  std::shared_ptr<CLI::App> app_;
};

// Reads the words and runs what they ask for, which answers the exit status; help and the
// version are printed at once. Throws WrongLine, and Refused if what was printed, by
// streams of C or of C++, did not arrive: a pipe or a disk may say no late.
int parse_and_run(Command &program, int argc, char **argv, const std::function<int()> &run);

// The same, as the end of main(): says what was thrown, by the program's name, and
// answers 2 for Refused and 1 for everything else.
int run_program_main(Command &program, int argc, char **argv, const std::function<int()> &run);

}  // namespace os

#endif
