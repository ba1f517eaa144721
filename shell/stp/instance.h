// SPDX-License-Identifier: MIT
// Spanning-tree instances as commands name them.
#ifndef SWCTL_SHELL_STP_INSTANCE_H
#define SWCTL_SHELL_STP_INSTANCE_H

#include <cstdint>
#include <string>
#include <vector>

#include "command/table.h"

namespace swsh {

// "instance 3", in a refusal.
std::string instance_text(uint32_t instance);

// The instance itself. Throws a CommandError of wrong usage if the chip does
// not have it.
uint32_t existing(const Context &context, uint32_t instance);

// The one that INSTANCE names, which has to exist, or all that exist.
std::vector<uint32_t> chosen_instances(const Arguments &arguments, const Context &context);

// INSTANCE, in the command table.
Parameter instance_parameter(bool required);

}  // namespace swsh

#endif
