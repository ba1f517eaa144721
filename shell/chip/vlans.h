// SPDX-License-Identifier: MIT
// VLANs by the shell's words: lists of IDs, logical interfaces.
#ifndef SWCTL_SHELL_CHIP_VLANS_H
#define SWCTL_SHELL_CHIP_VLANS_H

#include <swctl/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "command/table.h"

namespace swsh {

// A VLAN by its logical interfaces; ports without one are left out.
struct Vlan {
  int64_t vid = 0;
  std::vector<int64_t> tagged;
  std::vector<int64_t> untagged;
};

// None if the chip has no such VLAN, or answers no question about it.
std::optional<Vlan> read_vlan(const Context &context, int64_t vid);
// Every VLAN of the chip. Throws a CommandError of status kRefused if the chip
// answers no question at all.
std::vector<Vlan> read_vlans(const Context &context);
// The named VLANs. Throws a CommandError of wrong usage naming those that are
// not there.
std::vector<Vlan> vlans_of(const Context &context, const std::vector<int64_t> &vids);

// The VLAN that frames without a tag get on a port.
int64_t read_pvid(const Context &context, int64_t interface);

// Runs of IDs without gaps, as the library's ranges are.
struct VlanRange {
  uint32_t first = 0;
  uint32_t last = 0;
};
std::vector<VlanRange> ranges_of(const std::vector<int64_t> &vids);

// Bitmaps of interfaces and of their chip ports. Both throw a CommandError of
// wrong usage for an interface that the board does not have.
user_pbmp_t interface_bitmap(const std::vector<int64_t> &interfaces);
user_pbmp_t chip_bitmap(const std::vector<int64_t> &interfaces);

}  // namespace swsh

#endif
