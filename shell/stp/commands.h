// SPDX-License-Identifier: MIT
// The commands of the object stp, by what they show and set.
#ifndef SWCTL_SHELL_STP_COMMANDS_H
#define SWCTL_SHELL_STP_COMMANDS_H

#include "command/table.h"

namespace swsh {

// The states of ports in instances.
Node stp_show_command();
Node stp_set_command();
Node stp_instance_commands();
// The VLANs of instances.
Node stp_vlan_commands();

}  // namespace swsh

#endif
