// SPDX-License-Identifier: MIT
#include "port/pause.h"

#include <swctl-vchip/ability.h>

namespace vchip {

Pause resolve_pause(uint32_t local, uint32_t partner) {
  const uint32_t common = local & partner;
  if ((common & VCHIP_ABILITY_PAUSE) != 0) return {true, true};
  if ((common & VCHIP_ABILITY_ASYMMETRIC_PAUSE) == 0) return kNoPause;
  // One direction: towards the end that can be paused.
  return {(partner & VCHIP_ABILITY_PAUSE) != 0, (local & VCHIP_ABILITY_PAUSE) != 0};
}

}  // namespace vchip
