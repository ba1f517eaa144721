// SPDX-License-Identifier: MIT
#include "port/link.h"

#include <swctl-vchip/ability.h>

namespace vchip {
namespace {

struct Mode {
  uint32_t ability;
  uint32_t speed;
  uint32_t duplex;
};

// Best first.
constexpr Mode kModes[] = {
    {VCHIP_ABILITY_1000_FULL, VCHIP_SPEED_1000, VCHIP_DUPLEX_FULL},
    {VCHIP_ABILITY_1000_HALF, VCHIP_SPEED_1000, VCHIP_DUPLEX_HALF},
    {VCHIP_ABILITY_100_FULL, VCHIP_SPEED_100, VCHIP_DUPLEX_FULL},
    {VCHIP_ABILITY_100_HALF, VCHIP_SPEED_100, VCHIP_DUPLEX_HALF},
    {VCHIP_ABILITY_10_FULL, VCHIP_SPEED_10, VCHIP_DUPLEX_FULL},
    {VCHIP_ABILITY_10_HALF, VCHIP_SPEED_10, VCHIP_DUPLEX_HALF},
};

bool has_speed(uint32_t abilities, uint32_t speed) {
  for (const Mode &mode : kModes)
    if (mode.speed == speed && (abilities & mode.ability) != 0) return true;
  return false;
}

// The partner sends no negotiation pulses. Its speed shows in its signal, its
// duplex does not, so the standard takes half. Gigabit cannot be detected.
Link detect_in_parallel(uint32_t advertised, uint32_t partner_speed) {
  if (partner_speed > VCHIP_SPEED_100 || !has_speed(advertised, partner_speed)) return kLinkDown;
  return {true, partner_speed, VCHIP_DUPLEX_HALF};
}

}  // namespace

Link best_mode(uint32_t abilities) {
  for (const Mode &mode : kModes)
    if ((abilities & mode.ability) != 0) return {true, mode.speed, mode.duplex};
  return kLinkDown;
}

Link resolve_link(const LinkEnd &local, const LinkEnd &partner) {
  if (local.negotiates && partner.negotiates)
    return best_mode(local.advertised & partner.advertised);
  if (local.negotiates) return detect_in_parallel(local.advertised, partner.speed);
  if (local.speed > VCHIP_SPEED_1000) return kLinkDown;
  const bool reached = partner.negotiates ? has_speed(partner.advertised, local.speed)
                                          : partner.speed == local.speed;
  return reached ? Link{true, local.speed, local.duplex} : kLinkDown;
}

Pause resolve_pause(uint32_t local, uint32_t partner) {
  const uint32_t common = local & partner;
  if ((common & VCHIP_ABILITY_PAUSE) != 0) return {true, true};
  if ((common & VCHIP_ABILITY_ASYMMETRIC_PAUSE) == 0) return kNoPause;
  // One direction: towards the end that can be paused.
  return {(partner & VCHIP_ABILITY_PAUSE) != 0, (local & VCHIP_ABILITY_PAUSE) != 0};
}

}  // namespace vchip
