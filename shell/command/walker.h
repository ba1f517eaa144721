// SPDX-License-Identifier: MIT
// Walks the words of a command down the table. What it finds serves running a
// command, completing it, explaining it and saying what is wrong with it.
#ifndef SWCTL_SHELL_COMMAND_WALKER_H
#define SWCTL_SHELL_COMMAND_WALKER_H

#include <optional>
#include <string>
#include <vector>

#include "command/table.h"
#include "fault.h"

namespace swsh {

// The word that asks for help wherever it is, as -h and --help do.
inline constexpr char kHelpWord[] = "help";

// Something that may be at a position.
struct Expected {
  std::string word;  // the word itself, or the place holder of a value
  std::string help;
  bool literal = true;  // false: a place holder
};

struct Walk {
  const Node *node = nullptr;     // how far down the words led
  std::vector<std::string> path;  // the good words, abbreviations written out
  Arguments arguments;
  bool help = false;  // help was asked for; the words after it were not read
  // What may follow the good words.
  std::vector<Expected> expected;
  std::optional<Fault> wrong;    // a word that may not be where it is
  std::optional<Fault> missing;  // the words are good, but not enough to run

  bool runnable() const { return !help && !wrong && !missing; }
};

// `root` outlives the walk.
Walk walk(const Node &root, const std::vector<std::string> &words);

// The words that lead to a command, without its arguments.
std::vector<std::string> command_path(const Node &root, const Walk &found);

}  // namespace swsh

#endif
