// SPDX-License-Identifier: MIT
// What a command asks of the platform that answers its calls, and of the unit.
#ifndef SWCTL_SHELL_CHIP_PLATFORM_H
#define SWCTL_SHELL_CHIP_PLATFORM_H

#include <cstdint>
#include <optional>
#include <string>

#include "command/table.h"

namespace swsh {

// Throws the CommandError of status kRefused that says why no call of the
// platform can succeed, if the platform knows.
void expect_platform();

// The platform's sentence for a result, if the platform in use has one.
std::optional<std::string> result_sentence(int32_t result);

// Some functions of the library work on unit 0 whatever the caller names.
// Throws a CommandError of wrong usage if the command was given another unit;
// `word` is what works on unit 0 alone, if it is not the whole command.
void expect_unit_zero(const Context &context, const std::string &word = "");

}  // namespace swsh

#endif
