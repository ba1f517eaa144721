// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_OBJECTS_REGISTRY_H
#define SWCTL_SHELL_OBJECTS_REGISTRY_H

#include "command/table.h"

namespace swsh {

// The whole command table: a node whose children are the objects. It lives as
// long as the program.
const Node &command_table();

#define SWCTL_OBJECT(name) Node name##_object();
#include "objects/objects.def"
#undef SWCTL_OBJECT

}  // namespace swsh

#endif
