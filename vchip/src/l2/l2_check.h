// SPDX-License-Identifier: MIT
// What the calls on layer-2 entries and groups look at.
#ifndef VCHIP_L2_L2_CHECK_H
#define VCHIP_L2_L2_CHECK_H

#include "core/check.h"
#include "l2/l2_block.h"

namespace vchip {

constexpr uint8_t kGroupBit = 1;

constexpr int32_t on_vlan_id(uint32_t vid) {
  return at_most(vid, kMaxVlanId);
}

// The address of one station.
constexpr int32_t on_station(const uint8_t *mac) {
  return mac == nullptr || (mac[0] & kGroupBit) == 0 ? 0 : VCHIP_E_VALUE;
}

constexpr int32_t on_group(const uint8_t *mac) {
  return mac == nullptr || (mac[0] & kGroupBit) != 0 ? 0 : VCHIP_E_VALUE;
}

constexpr int32_t on_trunk(int32_t trunk) {
  return trunk >= 0 && trunk < kTrunks ? 0 : VCHIP_E_VALUE;
}

// A place to start a scan from: before the table or within it.
constexpr int32_t on_scan_index(int32_t index, int32_t size) {
  return index >= kNoIndex && index < size ? 0 : VCHIP_E_INDEX;
}

}  // namespace vchip

#endif
