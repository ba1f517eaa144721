// SPDX-License-Identifier: MIT
// The commands of the object mac, by file.
#ifndef SWCTL_SHELL_OBJECTS_MAC_H
#define SWCTL_SHELL_OBJECTS_MAC_H

#include <vector>

#include "command/table.h"

namespace swsh {

// Learning and aging: count, limit, aging.
std::vector<Node> mac_learning_commands();
// Dump files: dump, restore-view.
std::vector<Node> mac_dump_commands();
// monitor
Node mac_monitor_command();

// The library's address table is that of unit 0: throws a CommandError for
// another.
void expect_unit_0(const Context &context);

}  // namespace swsh

#endif
