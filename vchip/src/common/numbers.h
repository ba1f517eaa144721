// SPDX-License-Identifier: MIT
// Numbers that several blocks share.
#ifndef VCHIP_COMMON_NUMBERS_H
#define VCHIP_COMMON_NUMBERS_H

#include <swctl-vchip/vchip.h>

#include <cstdint>

namespace vchip {

// Ports as bits of a mask: bit p is chip port p.
constexpr uint32_t port_bit(int32_t port) {
  return uint32_t{1} << static_cast<uint32_t>(port);
}
inline constexpr uint32_t kAllPorts = port_bit(VCHIP_PORTS) - 1;
inline constexpr uint32_t kCpuPortBit = port_bit(VCHIP_CPU_PORT);

// Every VLAN ID has its place in the tables; 0 and 4095 never name a VLAN
// (IEEE 802.1Q).
inline constexpr uint32_t kVlanIds = 4096;
inline constexpr uint32_t kFirstVlan = 1;
inline constexpr uint32_t kLastVlan = 4094;
inline constexpr uint32_t kDefaultVlan = 1;

inline constexpr uint32_t kPriorities = 8;
inline constexpr uint32_t kQueues = 8;      // of a port
inline constexpr uint32_t kInstances = 16;  // of the spanning tree

// Trunk 0 is a trunk like any other in the table of trunks. In an entry of the
// address table 0 means that the address is on its port and on no trunk.
inline constexpr uint32_t kTrunkGroups = 32;
inline constexpr int32_t kOnNoTrunk = 0;

// There are two tables of so many port masks. The forwarding port masks
// (forward/mask_block.h) are those that a type of lookup miss and the action
// "redirect to ports" of a rule name by an index. The masks of the groups
// (l2/group_block.h) belong to the groups of layer 2: what a group's entry calls
// its forwarding index, and the action "redirect to group", is an index of these.
inline constexpr uint32_t kPortMasks = 512;
// The first forwarding port masks are for flooding and hold every port after
// power-on.
inline constexpr uint32_t kFloodMasks = 8;

inline constexpr uint64_t kNanosecondsPerSecond = 1000000000;

// Why the lookup of a destination found nothing.
inline constexpr uint32_t kMissTypes = 6;

}  // namespace vchip

#endif
