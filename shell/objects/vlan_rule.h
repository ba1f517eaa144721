// SPDX-License-Identifier: MIT
// The part of the object vlan that deals with rules and conversion.
#ifndef SWCTL_SHELL_OBJECTS_VLAN_RULE_H
#define SWCTL_SHELL_OBJECTS_VLAN_RULE_H

#include "command/table.h"

namespace swsh {

Node vlan_rule_commands();
Node vlan_translate_commands();

}  // namespace swsh

#endif
