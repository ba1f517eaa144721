// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_VLAN_VID_H
#define SWCTL_SRC_VLAN_VID_H

#include <cstdint>

namespace swctl {

// VLAN IDs come in words of which only the low half counts.
constexpr uint16_t vid_of(uint32_t word) {
  return static_cast<uint16_t>(word);
}

}  // namespace swctl

#endif
