// SPDX-License-Identifier: MIT
// Changing the chip from one configuration to another, whole or not at all.
#ifndef SWCTL_SHELL_CONFIG_CHANGE_H
#define SWCTL_SHELL_CONFIG_CHANGE_H

#include <functional>
#include <string>

#include "config/state.h"

namespace swsh {

// Changes what the chip has to the target. What is refused half-way is put back; the
// CommandError then says what was refused and what could not be put back. Returns how many
// commands it took.
size_t change_to(const State &target, const Context &context, const Board &board);

// Puts back what differs from a state, and says in words what does not come back: empty if
// all does. `error` says why it is done.
std::string put_back(const State &before, const Context &context, const Board &board);

}  // namespace swsh

#endif
