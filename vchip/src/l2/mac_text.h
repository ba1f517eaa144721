// SPDX-License-Identifier: MIT
#ifndef VCHIP_L2_MAC_TEXT_H
#define VCHIP_L2_MAC_TEXT_H

#include <cstdint>
#include <cstdio>
#include <string>

namespace vchip {

// "02:00:5e:00:00:01"
inline std::string mac_text(const uint8_t *mac) {
  char text[sizeof "02:00:5e:00:00:01"];
  snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3],
           mac[4], mac[5]);
  return text;
}

}  // namespace vchip

#endif
