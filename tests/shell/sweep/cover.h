// SPDX-License-Identifier: MIT
#ifndef SWCTL_TESTS_SHELL_SWEEP_COVER_H
#define SWCTL_TESTS_SHELL_SWEEP_COVER_H

#include "run.h"
#include "world.h"

namespace shell_sweep {

// Whether every command of the table is swept, with every place and keyword
// that it has. Prints what is missing.
bool covers_everything(const Commands &commands);

// The chip after the preparing lines. Throws std::runtime_error if one fails.
const SharedChip &prepared_chip(const Commands &commands, uint32_t unit);

}  // namespace shell_sweep

#endif
