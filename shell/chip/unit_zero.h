// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_CHIP_UNIT_ZERO_H
#define SWCTL_SHELL_CHIP_UNIT_ZERO_H

#include "command/table.h"

namespace swsh {

// Some functions of the library work on unit 0 whatever the caller names.
// Throws a CommandError of wrong usage if the command was given another unit.
void expect_unit_zero(const Context &context);

}  // namespace swsh

#endif
