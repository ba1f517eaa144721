// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_L2_ENTRY_H
#define SWCTL_SRC_L2_ENTRY_H

#include <swctl/l2.h>

#include <cstring>

namespace swctl {

constexpr bool is_violation(const chip_l2_ucast_entry &entry) {
  return (entry.state & USER_L2_STATE_VIOLATION) != 0;
}

// What a reader may write of the caller's record, the key left out.
inline void convert_values(const chip_l2_ucast_entry &entry, user_l2_addr_t &out) {
  out.flags = is_violation(entry) ? entry.flags | L2_FLAG_VIOLATION : entry.flags;
  out.port = entry.port;
  out.tgid = entry.trunk;
  out.aux = entry.aux;
}

inline void convert(const chip_l2_ucast_entry &entry, user_l2_addr_t &out) {
  convert_values(entry, out);
  memcpy(out.mac, entry.mac, sizeof out.mac);
  out.vid = static_cast<uint16_t>(entry.vid);
}

}  // namespace swctl

#endif
