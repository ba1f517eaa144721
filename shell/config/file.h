// SPDX-License-Identifier: MIT
// A configuration in a file: commands as config show prints them, and others that
// make settings.
#ifndef SWCTL_SHELL_CONFIG_FILE_H
#define SWCTL_SHELL_CONFIG_FILE_H

#include <string>
#include <vector>

#include "command/walker.h"
#include "config/state.h"
#include "fault.h"

namespace swsh {

struct LineFault {
  int64_t line;
  std::string place;  // "plan.conf:3"
  Fault fault;
};

struct FileState {
  State state;
  std::vector<LineFault> faults;
};

// Every fault of the file is found, not the first alone. Throws a CommandError if it
// cannot be read.
FileState read_file(const std::string &path, const Context &context, const Board &board);
// The same of text, whose lines have the name.
FileState read_text(const std::string &name, const std::string &text, const Context &context,
                    const Board &board);

// Throws the CommandError that names all faults, line by line, if there are any.
void expect_good(const FileState &file);

// A setting that a command was about.
struct Changed {
  size_t kind;
  Id id;
};

// Takes a command, "vlan add", into a configuration. False if it makes no settings. Throws
// a CommandError if it makes some and something else, or if they do not fit what there is.
bool take_settings(const std::string &command, const Walk &found, const Context &context,
                   const Board &board, State &state, std::vector<Changed> &changed);

}  // namespace swsh

#endif
