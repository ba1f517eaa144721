// SPDX-License-Identifier: MIT
#ifndef SWCTL_TESTS_VLAN_BITMAP_H
#define SWCTL_TESTS_VLAN_BITMAP_H

#include <swctl-vchip/view.h>
#include <swctl/types.h>

#include <initializer_list>
#include <stdexcept>

namespace swctl_test {

// Written without the library's own helpers.
inline user_pbmp_t bitmap(std::initializer_list<int> ports) {
  user_pbmp_t map = {};
  for (const int port : ports) map.word[port / 32] |= uint32_t{1} << (port % 32);
  return map;
}

inline bool equal(const user_pbmp_t &map, std::initializer_list<uint32_t> words) {
  size_t index = 0;
  for (const uint32_t word : words)
    if (map.word[index++] != word) return false;
  for (; index < USER_PBMP_WORDS; ++index)
    if (map.word[index] != 0) return false;
  return true;
}

inline vchip::VlanView vlan_of(uint32_t unit, uint32_t vid) {
  for (const vchip::VlanView &vlan : vchip::vlans(unit))
    if (vlan.vid == vid) return vlan;
  throw std::out_of_range("no such VLAN");
}

}  // namespace swctl_test

#endif
