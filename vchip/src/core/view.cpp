// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>

#include <string>

#include "core/board.h"
#include "core/dump.h"
#include "core/viewing.h"

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

void dump_chip(Dump &document, const State &state, const std::string &image) {
  if (image.empty()) {
    document.null("image");
  } else {
    document.text("image", image);
  }
  document.number("interrupted_writes", state.header.interrupted_writes);
  state.platform.dump("platform", document);
  state.rules.dump("rules", document);
  document.objects("units", VCHIP_UNITS, [&](Dump &entry, size_t unit) {
    entry.number("unit", static_cast<int64_t>(unit));
    each_block(state.units[unit],
               [&](const char *name, const auto &block) { block.dump(name, entry); });
  });
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

SwitchView switch_wide(uint32_t unit) {
  Viewing chip;
  const SwitchBlock &block = chip.unit(unit).switch_wide;
  return {block.tag_counts(),
          {block.max_length().begin(), block.max_length().end()},
          {block.cpu_format().begin(), block.cpu_format().end()}};
}

PlatformView platform() {
  Viewing chip;
  const PlatformBlock &block = chip.state().platform;
  PlatformView view = {};
  view.trace_on = block.trace() != 0;
  view.log_lines = block.log_lines();
  block.each_record([&](const char *location, const char *message) {
    view.trace.push_back({location, message});
  });
  return view;
}

std::string dump_json(int indent) {
  Viewing chip;
  return json_text(indent,
                   [&](Dump &document) { dump_chip(document, chip.state(), chip.image_path()); });
}

}  // namespace vchip
