// SPDX-License-Identifier: MIT
// Where things are in a frame of IEEE 802.3 with tags of IEEE 802.1Q.
#ifndef VCHIPD_ETHERNET_H
#define VCHIPD_ETHERNET_H

#include <cstdint>

namespace vchipd {

// Both addresses; a tag comes after them.
inline constexpr uint32_t kMacs = 12;
inline constexpr uint32_t kTagBytes = 4;

}  // namespace vchipd

#endif
