// SPDX-License-Identifier: MIT
// The part of the object vlan that deals with rules and conversion.
#ifndef SWCTL_SHELL_OBJECTS_VLAN_RULE_H
#define SWCTL_SHELL_OBJECTS_VLAN_RULE_H

#include "command/table.h"

namespace swsh {

Node vlan_rule_commands();
Node vlan_translate_commands();

// Their show commands.
Node vlan_rule_show_command();
Node vlan_translate_show_command();

}  // namespace swsh

#endif
