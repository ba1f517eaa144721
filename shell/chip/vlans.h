// SPDX-License-Identifier: MIT
// VLANs by the shell's words: lists of IDs, logical interfaces.
#ifndef SWCTL_SHELL_CHIP_VLANS_H
#define SWCTL_SHELL_CHIP_VLANS_H

#include <swctl/types.h>

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "command/table.h"

namespace swsh {

// A VLAN with masks of chip ports: its members, and the ports that would send
// its frames without a tag.
struct Vlan {
  int64_t vid = 0;
  uint32_t member = 0;
  uint32_t untag = 0;

  uint32_t tagged() const { return member & ~untag; }
  uint32_t untagged() const { return member & untag; }
};

// "VLAN 10", in a refusal.
std::string vlan_text(int64_t vid);

// Which VLANs a unit has, by the platform, which says it apart from a refusal;
// none if it cannot tell.
std::optional<std::set<int64_t>> vlans_there(uint32_t unit);

// Every VLAN of the chip. Throws a CommandError of status kRefused if the chip
// refuses to say which there are, or what they are.
std::vector<Vlan> read_vlans(const Context &context);
// The named VLANs. Throws the same, and there_is_no() naming those that the
// chip does not have.
std::vector<Vlan> vlans_of(const Context &context, const std::vector<int64_t> &vids);

// Gives a VLAN other ports.
void write_vlan(const Context &context, const Vlan &vlan);

// The VLAN that frames without a tag get on a port.
int64_t read_pvid(const Context &context, int64_t interface);

// Bitmap of interfaces, as the rules of the adapter have it. Throws a
// CommandError of wrong usage for an interface that the board does not have.
user_pbmp_t interface_bitmap(const std::vector<int64_t> &interfaces);

}  // namespace swsh

#endif
