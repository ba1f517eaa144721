// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_OBJECTS_DOS_H
#define SWCTL_SHELL_OBJECTS_DOS_H

#include <cstdint>
#include <vector>

#include "command/table.h"

namespace swsh {

// What the chip answers about a type of attack.
struct AttackReading {
  uint32_t type;
  int32_t result;
  uint32_t action;
};

// Every type that the chip has. Throws a CommandError if it refuses one of them.
std::vector<AttackReading> read_attack_actions(const Context &context);

}  // namespace swsh

#endif
