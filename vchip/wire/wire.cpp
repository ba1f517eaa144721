// SPDX-License-Identifier: MIT
#include "wire.h"

#include <swctl-vchip/ability.h>

namespace vchipd {

int32_t Wire::deliver(uint32_t unit, int32_t port, Arrivals &arrivals) {
  for (vchip_arrival_t &arrival : arrivals) arrival.port = port;
  return vchip_frames_arrive(unit, arrivals.data(), static_cast<uint32_t>(arrivals.size()));
}

vchip_partner_t Wire::partner() const {
  return {1, VCHIP_ABILITY_USUAL};
}

}  // namespace vchipd
