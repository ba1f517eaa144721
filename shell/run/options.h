// SPDX-License-Identifier: MIT
// The options in front of a command.
#ifndef SWCTL_SHELL_RUN_OPTIONS_H
#define SWCTL_SHELL_RUN_OPTIONS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "fault.h"
#include "run/command.h"

namespace swsh {

struct Option {
  std::string name;
  char letter;        // 0: none
  std::string value;  // place holder; empty: takes no value
  std::string help;   // empty: hidden
};

const std::vector<Option> &options();
// -u, -unit N
std::string option_usage(const Option &option);
// Whether the word, an option in any of its spellings, is followed by a value.
bool option_takes_value(const std::string &word);
// The option that the word spells in full, as those after the object must be:
// -j, -json or --json. Null if it is none.
const Option *spelled_option(const std::string &word);

struct Settings {
  bool json = false;
  bool pretty = false;
  bool force = false;
  bool atomic = false;
  bool may_exist = false;
  bool no_pager = false;
  std::optional<int64_t> bring_back_after;  // how the program calls itself, config/pending.h
  bool echo_status = false;
  bool help = false;
  bool version = false;
  bool manual = false;
  bool described = false;  // completions have their help beside them
  uint32_t unit = 0;
  std::optional<std::string> batch;
  std::optional<std::string> completion_index;
  std::vector<std::string> words;  // the command
  std::optional<Fault> fault;      // the first wrong option

  Style style() const;
};

// Options come before the command or, spelled in full, among its words; a
// word -- makes the rest words. Reads the whole line even if an option is wrong,
// so that -j is known when the fault is reported.
Settings read_options(int argc, char **argv);

}  // namespace swsh

#endif
