// SPDX-License-Identifier: MIT
// What happens to a port from outside.
#include <swctl-vchip/vchip.h>

#include <bit>

#include "chip/chip.h"
#include "common/board.h"
#include "common/check.h"

namespace {

using vchip::change;
using vchip::not_null;
using vchip::on_front_port;

// A partner has a mode; a forced one has only one.
int32_t possible(const vchip_partner_t &partner) {
  if ((partner.ability & ~VCHIP_ABILITY_ALL) != 0) return VCHIP_E_VALUE;
  const int modes = std::popcount(partner.ability & VCHIP_ABILITY_MODES);
  const bool good = partner.autonegotiation != 0 ? modes >= 1 : modes == 1;
  return good ? 0 : VCHIP_E_VALUE;
}

int32_t possible_medium(int32_t port, uint32_t medium) {
  if (medium == VCHIP_MEDIUM_COPPER) return 0;
  return medium == VCHIP_MEDIUM_FIBRE && vchip::is_combo(port) ? 0 : VCHIP_E_VALUE;
}

}  // namespace

int32_t vchip_cable_plug(uint32_t unit, int32_t port, const vchip_partner_t *partner) {
  const vchip_partner_t copy = partner == nullptr ? vchip_partner_t{} : *partner;
  return change(unit, {on_front_port(port), not_null(partner), possible(copy)},
                [=](vchip::Unit &chip) { chip.port.plug(port, copy); });
}

int32_t vchip_cable_pull(uint32_t unit, int32_t port) {
  return change(unit, {on_front_port(port)}, [=](vchip::Unit &chip) { chip.port.pull(port); });
}

int32_t vchip_medium_set(uint32_t unit, int32_t port, uint32_t medium) {
  return change(unit, {on_front_port(port), possible_medium(port, medium)},
                [=](vchip::Unit &chip) { chip.port.set_medium(port, medium); });
}
