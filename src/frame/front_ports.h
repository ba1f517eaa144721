// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_FRAME_FRONT_PORTS_H
#define SWCTL_SRC_FRAME_FRONT_PORTS_H

#include <swctl/platform/adapter.h>

#include <cstdint>

namespace swctl {

// Calls visit(chip port) for the logical interfaces 1 to USER_FRONT_INTERFACES,
// ascending. The first negative result ends the walk and is returned; else 0.
// What the adapter answers for an interface is not checked.
template <typename Visit>
int32_t each_front_port(Visit visit) {
  for (int32_t interface = 1; interface <= USER_FRONT_INTERFACES; ++interface) {
    const int32_t result = visit(adp_intf_2_phy_id(interface));
    if (result < 0) return result;
  }
  return 0;
}

// The same to the end: no result ends the walk, and that of the last port is
// returned.
template <typename Visit>
int32_t every_front_port(Visit visit) {
  int32_t result = 0;
  for (int32_t interface = 1; interface <= USER_FRONT_INTERFACES; ++interface)
    result = visit(adp_intf_2_phy_id(interface));
  return result;
}

}  // namespace swctl

#endif
