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

// Trunks are numbered from 0.
inline constexpr uint32_t kTrunkGroups = 32;

// Why the lookup of a destination found nothing.
inline constexpr uint32_t kMissTypes = 6;

}  // namespace vchip

#endif
