// SPDX-License-Identifier: MIT
// The part of the object vlan that deals with rules and conversion.
#ifndef SWCTL_SHELL_OBJECTS_VLAN_RULE_H
#define SWCTL_SHELL_OBJECTS_VLAN_RULE_H

#include "chip/vlan_rules.h"
#include "command/table.h"

namespace swsh {

Node vlan_rule_commands();
Node vlan_translate_commands();

// Their show commands.
Node vlan_rule_show_command();
Node vlan_translate_show_command();

// A rule that was read back: its kind and index, what it matches and sets.
Record vlan_rule_record(const RuleKind &kind, const swctl_platform_entity_rule &rule);

}  // namespace swsh

#endif
