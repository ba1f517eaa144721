// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_COMMAND_HELP_H
#define SWCTL_SHELL_COMMAND_HELP_H

#include <string>
#include <vector>

#include "command/table.h"
#include "command/walker.h"
#include "output/record.h"

namespace swsh {

// The usage line of a node that the words of `path` lead to, without "Usage:".
std::string usage_line(const Node &node, const std::vector<std::string> &path);

// Help for a node: as text for a person in lines of `width` columns, as a record for
// JSON.
Answer help_answer(const Node &node, const std::vector<std::string> &path, size_t width);

// What a parameter is for, and which values it takes unless they are words.
std::string described(const Parameter &parameter);

// What may come next, a line each, for the interactive `?`.
std::string expected_text(const std::vector<Expected> &expected, size_t width);

}  // namespace swsh

#endif
