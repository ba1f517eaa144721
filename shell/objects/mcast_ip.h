// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_OBJECTS_MCAST_IP_H
#define SWCTL_SHELL_OBJECTS_MCAST_IP_H

#include "command/table.h"

namespace swsh {

// The branch "ip" of the object mcast: entries for IPv4 and IPv6 groups.
Node mcast_ip_commands();

}  // namespace swsh

#endif
