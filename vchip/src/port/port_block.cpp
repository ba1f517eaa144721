// SPDX-License-Identifier: MIT
#include "port/port_block.h"

#include <algorithm>

#include "common/board.h"

namespace vchip {

static_assert((VCHIP_ABILITY_ALL & 3u) == 0, "the cable's flags need reserved bits");

void PortBlock::power_on() {
  constexpr Port kPowerOn = {
      .admin = 1,
      .autonegotiation = 1,
      .advertised = VCHIP_ABILITY_USUAL,
      .forced_speed = VCHIP_SPEED_1000,
      .forced_duplex = VCHIP_DUPLEX_FULL,
      .forced_flow_control = 0,
      .medium = VCHIP_MEDIUM_COPPER,
      .loopback = 0,
      .back_pressure = 0,
      .crossover = VCHIP_CROSSOVER_AUTO,
      .eee = 0,
      .cable = 0,
  };
  for (Port &port : ports_) port = kPowerOn;
}

bool PortBlock::sound() const {
  return std::ranges::all_of(ports_, [](const Port &port) {
    return port.forced_speed <= VCHIP_SPEED_MAX && port.forced_duplex <= VCHIP_DUPLEX_FULL &&
           port.medium <= VCHIP_MEDIUM_FIBRE && port.crossover <= VCHIP_CROSSOVER_CROSSED;
  });
}

ForcedMode PortBlock::forced(int32_t port) const {
  const Port &own = of(port);
  return {own.forced_speed, own.forced_duplex, own.forced_flow_control};
}

void PortBlock::set_forced(int32_t port, const ForcedMode &mode) {
  Port &own = of(port);
  own.forced_speed = mode.speed;
  own.forced_duplex = mode.duplex;
  own.forced_flow_control = mode.flow_control;
}

void PortBlock::set_flow_control(int32_t port, bool on) {
  constexpr uint32_t kBits = VCHIP_ABILITY_PAUSE | VCHIP_ABILITY_ASYMMETRIC_PAUSE;
  Port &own = of(port);
  own.advertised = on ? own.advertised | kBits : own.advertised & ~kBits;
  own.forced_flow_control = on;
}

Cable PortBlock::cable(int32_t port) const {
  const uint32_t word = of(port).cable;
  const uint32_t negotiates = (word & kNegotiates) != 0 ? 1 : 0;
  return {(word & kPlugged) != 0, {negotiates, word & VCHIP_ABILITY_ALL}};
}

void PortBlock::plug(int32_t port, const vchip_partner_t &partner) {
  const uint32_t negotiates = partner.autonegotiation != 0 ? kNegotiates : 0;
  of(port).cable = partner.ability | negotiates | kPlugged;
}

Link PortBlock::link(int32_t port) const {
  constexpr Link kGigabit = {true, VCHIP_SPEED_1000, VCHIP_DUPLEX_FULL};
  if (port == VCHIP_CPU_PORT) return kGigabit;
  const Cable there = cable(port);
  if (!there.plugged) return kLinkDown;
  // The fibre side reports light, which does not ask whether the port is on.
  if (medium(port) == VCHIP_MEDIUM_FIBRE) return kGigabit;
  if (!admin(port)) return kLinkDown;
  const Port &own = of(port);
  const Link fixed = best_mode(there.partner.ability);
  const LinkEnd local = {autonegotiation(port), own.advertised, own.forced_speed,
                         own.forced_duplex};
  const LinkEnd partner = {there.partner.autonegotiation != 0, there.partner.ability, fixed.speed,
                           fixed.duplex};
  return resolve_link(local, partner);
}

Pause PortBlock::pause(int32_t port) const {
  const Link now = link(port);
  if (!now.up || now.duplex != VCHIP_DUPLEX_FULL) return kNoPause;
  const Port &own = of(port);
  const bool forced = own.forced_flow_control != 0;
  if (!autonegotiation(port)) return {forced, forced};
  const vchip_partner_t partner = cable(port).partner;
  return partner.autonegotiation != 0 ? resolve_pause(own.advertised, partner.ability) : kNoPause;
}

}  // namespace vchip
