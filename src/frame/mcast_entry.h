// SPDX-License-Identifier: MIT
// Multicast entries as the SDK has them, made from the caller's words.
#ifndef SWCTL_SRC_FRAME_MCAST_ENTRY_H
#define SWCTL_SRC_FRAME_MCAST_ENTRY_H

#include <swctl/platform/l2_records.h>

#include <cstring>

namespace swctl {

inline chip_l2_mcast_entry mcast_entry(const uint8_t *mac, uint32_t vid, uint32_t portmask = 0) {
  chip_l2_mcast_entry entry = {};
  entry.vid = static_cast<uint16_t>(vid);
  memcpy(entry.mac, mac, sizeof entry.mac);
  entry.portmask = portmask;
  return entry;
}

}  // namespace swctl

#endif
