// SPDX-License-Identifier: MIT
// What the kinds of values mean. A new kind is an enumerator of Kind and a
// case in each function here.
#ifndef SWCTL_SHELL_COMMAND_VALUE_H
#define SWCTL_SHELL_COMMAND_VALUE_H

#include <optional>
#include <string>
#include <vector>

#include "command/table.h"

namespace swsh {

struct ParsedValue {
  Argument argument;
  std::string fault;  // empty: the word is good; else what is wrong with it
};

ParsedValue parse_value(const Type &type, const std::string &word);

// What the chip takes a number for that lies between two of its steps: "96 kbit,
// in steps of 16". None if it takes it as it is.
std::optional<std::string> value_taken(const Type &type, const Argument &argument);

// How usage lines show the value: 10|100, PORTS, 0-4095.
std::string value_usage(const Type &type);

// What the value may be, in words: the choices, or one description.
std::vector<std::string> value_expected(const Type &type);

}  // namespace swsh

#endif
