// SPDX-License-Identifier: MIT
#include "wire.h"

#include <swctl-vchip/ability.h>

namespace vchipd {

int32_t Wire::deliver(uint32_t unit, int32_t port, Arrivals &arrivals) {
  for (vchip_arrival_t &arrival : arrivals) arrival.port = port;
  const auto count = static_cast<uint32_t>(arrivals.size());
  const int32_t result = vchip_frames_arrive_lent(unit, arrivals.data(), count);
  if (result != 0) counts_.missed += count;
  return result;
}

vchip_partner_t Wire::partner() const {
  return {1, VCHIP_ABILITY_USUAL};
}

}  // namespace vchipd
