// SPDX-License-Identifier: MIT
#ifndef VCHIP_CORE_PORTS_IN_H
#define VCHIP_CORE_PORTS_IN_H

#include <swctl-vchip/vchip.h>

#include <cstdint>
#include <vector>

namespace vchip {

// The ports of a mask, for a dump.
inline std::vector<uint32_t> ports_in(uint32_t mask) {
  std::vector<uint32_t> ports;
  for (uint32_t port = 0; port < VCHIP_PORTS; ++port)
    if ((mask >> port & 1) != 0) ports.push_back(port);
  return ports;
}

}  // namespace vchip

#endif
