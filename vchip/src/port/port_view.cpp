// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>

#include "chip/viewing.h"
#include "common/board.h"

namespace vchip {
namespace {

void view_cable(PortView &view, const Cable &cable) {
  view.cable = cable.plugged;
  view.partner_autonegotiation = cable.partner.autonegotiation != 0;
  view.partner_ability = cable.partner.ability;
}

void view_settings(PortView &view, const PortBlock &ports) {
  view.admin = ports.admin(view.port);
  view.autonegotiation = ports.autonegotiation(view.port);
  view.advertised = ports.advertised(view.port);
  const ForcedMode forced = ports.forced(view.port);
  view.forced_speed = forced.speed;
  view.forced_duplex = forced.duplex;
  view.forced_flow_control = forced.flow_control;
  view.medium = ports.medium(view.port);
  view.loopback = ports.loopback(view.port);
  view.back_pressure = ports.back_pressure(view.port);
  view.crossover = ports.crossover(view.port);
  view.eee = ports.eee(view.port);
}

}  // namespace

PortView port(uint32_t unit, int32_t port) {
  Viewing chip;
  const PortBlock &ports = chip.unit(unit).port;
  expect_port(port);
  PortView view = {};
  view.port = port;
  view.interface = interface_of(port);
  view.combo = is_combo(port);
  view_settings(view, ports);
  view_cable(view, ports.cable(port));
  const Link link = ports.link(port);
  view.link = link.up;
  view.speed = link.speed;
  view.duplex = link.duplex;
  const Pause pause = ports.pause(port);
  view.pause_transmit = pause.transmit;
  view.pause_receive = pause.receive;
  return view;
}

}  // namespace vchip
