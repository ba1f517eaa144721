// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_CONFIG_KINDS_VLAN_RULES_H
#define SWCTL_SHELL_CONFIG_KINDS_VLAN_RULES_H

#include "config/kinds.h"

namespace swsh {

// Rules of the adapter, and translation at the egress.
void add_vlan_rule_kinds(Kinds &kinds);

}  // namespace swsh

#endif
