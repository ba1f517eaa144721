// SPDX-License-Identifier: MIT
// The commands of the object port, a file each.
#ifndef SWCTL_SHELL_PORT_COMMANDS_H
#define SWCTL_SHELL_PORT_COMMANDS_H

#include <swctl/port.h>

#include "chip/ports.h"

namespace swsh {

Node port_show_command();
Node port_set_command();
Node port_stats_command();
Node port_clear_command();
Node port_cable_command();

// The names of what a port may advertise.
std::vector<Choice> ability_choices();

}  // namespace swsh

#endif
