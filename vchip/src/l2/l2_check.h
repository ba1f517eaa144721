// SPDX-License-Identifier: MIT
// What the calls on layer-2 entries and groups look at.
#ifndef VCHIP_L2_L2_CHECK_H
#define VCHIP_L2_L2_CHECK_H

#include "common/check.h"
#include "l2/address_table.h"

namespace vchip {

constexpr uint8_t kGroupBit = 1;

// The address of one station.
constexpr int32_t on_station(const uint8_t *mac) {
  return mac == nullptr || (mac[0] & kGroupBit) == 0 ? 0 : VCHIP_E_VALUE;
}

constexpr int32_t on_group(const uint8_t *mac) {
  return mac == nullptr || (mac[0] & kGroupBit) != 0 ? 0 : VCHIP_E_VALUE;
}

// kOnNoTrunk is a good number, and so is every trunk.
constexpr int32_t is_trunk_or_none(int32_t trunk) {
  return at_most(static_cast<uint32_t>(trunk), kTrunkGroups - 1);
}

// A place to start a scan from: before the table or within it.
constexpr int32_t on_scan_index(int32_t index, int32_t size) {
  return index >= kNoIndex && index < size ? 0 : VCHIP_E_INDEX;
}

}  // namespace vchip

#endif
