// SPDX-License-Identifier: MIT
// What ports are called. The chip has no place for it: a file in the directory of the
// unit has it, and belongs to one chip.
#ifndef SWCTL_SHELL_CONFIG_DESCRIPTION_H
#define SWCTL_SHELL_CONFIG_DESCRIPTION_H

#include <cstdint>
#include <map>
#include <string>

namespace swsh {

// By interface; ports without one are not there.
using Descriptions = std::map<int64_t, std::string>;

// Throws a CommandError of wrong usage that names what cannot be kept: a control character,
// bytes that are no UTF-8, or one character too many.
void expect_description(const std::string &text);

// Throws a CommandError of status kRefused if there is a file that cannot be read.
Descriptions read_descriptions(uint32_t unit);
// An empty text takes the description away. Throws a CommandError of status kRefused if the
// file cannot be written.
void set_description(uint32_t unit, int64_t interface, const std::string &text);

// As one word of a command: "to the \"north\"".
std::string description_word(const std::string &text);

}  // namespace swsh

#endif
