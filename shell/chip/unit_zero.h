// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_CHIP_UNIT_ZERO_H
#define SWCTL_SHELL_CHIP_UNIT_ZERO_H

#include <string>

#include "command/table.h"

namespace swsh {

// Some functions of the library work on unit 0 whatever the caller names.
// Throws a CommandError of wrong usage if the command was given another unit;
// `word` is what works on unit 0 alone, if it is not the whole command.
void expect_unit_zero(const Context &context, const std::string &word = "");

}  // namespace swsh

#endif
