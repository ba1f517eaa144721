// SPDX-License-Identifier: MIT
// The layer-2 tables as the chip has them, read to their end. The library's own
// walks end alike at the end of a table and at a failure, and remove an entry
// whose VLAN cannot be read.
#ifndef SWCTL_SHELL_CHIP_L2_WALK_H
#define SWCTL_SHELL_CHIP_L2_WALK_H

#include <swctl/platform/l2_records.h>

#include <vector>

#include "command/table.h"

namespace swsh {

// Both throw the CommandError of refuse() if the chip refuses before the end of
// the table.

// Every unicast entry of unit 0, in the chip's order, with L2_FLAG_VIOLATION
// where its state says so. As with the library, one in a VLAN that does not exist is removed from
// the chip and left out; not so where the platform does not say which VLANs exist.
std::vector<chip_l2_ucast_entry> read_address_entries();

// Every multicast group of a unit, in the chip's order.
std::vector<chip_l2_mcast_entry> read_groups(uint32_t unit);

}  // namespace swsh

#endif
