// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "common/board.h"
#include "document/dump.h"
#include "port/port_block.h"

namespace vchip {
namespace {

struct AbilityName {
  uint32_t bit;
  const char *name;
};
constexpr AbilityName kAbilityNames[] = {
    {VCHIP_ABILITY_10_HALF, "10-half"},     {VCHIP_ABILITY_10_FULL, "10-full"},
    {VCHIP_ABILITY_100_HALF, "100-half"},   {VCHIP_ABILITY_100_FULL, "100-full"},
    {VCHIP_ABILITY_1000_HALF, "1000-half"}, {VCHIP_ABILITY_1000_FULL, "1000-full"},
    {VCHIP_ABILITY_PAUSE, "pause"},         {VCHIP_ABILITY_ASYMMETRIC_PAUSE, "asymmetric-pause"},
};

std::vector<std::string> ability_names(uint32_t abilities) {
  std::vector<std::string> names;
  for (const AbilityName &ability : kAbilityNames)
    if ((abilities & ability.bit) != 0) names.emplace_back(ability.name);
  return names;
}

void dump_abilities(Dump &entry, uint32_t abilities) {
  entry.number("word", abilities);
  entry.texts("modes", ability_names(abilities));
}

void dump_forced(Dump &entry, const ForcedMode &mode) {
  entry.number("speed", mode.speed);
  entry.number("duplex", mode.duplex);
  entry.number("flow_control", mode.flow_control);
}

void dump_cable(Dump &entry, const Cable &cable) {
  if (!cable.plugged) return entry.null("partner");
  entry.object("partner", [&](Dump &partner) {
    partner.flag("autonegotiation", cable.partner.autonegotiation != 0);
    partner.object("ability", [&](Dump &word) { dump_abilities(word, cable.partner.ability); });
  });
}

const char *crossover_name(uint32_t mode) {
  switch (mode) {
    case VCHIP_CROSSOVER_STRAIGHT: return "straight";
    case VCHIP_CROSSOVER_CROSSED: return "crossed";
    default: return "auto";
  }
}

void dump_pause(Dump &entry, const Pause &pause) {
  entry.flag("transmit", pause.transmit);
  entry.flag("receive", pause.receive);
}

void dump_link(Dump &entry, const Link &link) {
  entry.flag("up", link.up);
  if (!link.up) return;
  entry.number("speed", link.speed);
  entry.number("duplex", link.duplex);
}

}  // namespace

void PortBlock::dump_port(Dump &entry, int32_t port) const {
  entry.number("port", port);
  const int32_t interface = interface_of(port);
  if (interface == VCHIP_NO_INTERFACE) {
    entry.null("interface");
  } else {
    entry.number("interface", interface);
  }
  entry.flag("admin", admin(port));
  entry.object("link", [&](Dump &state) { dump_link(state, link(port)); });
  entry.flag("loopback", loopback(port));
  if (port == VCHIP_CPU_PORT) return;
  entry.flag("autonegotiation", autonegotiation(port));
  entry.object("advertised", [&](Dump &word) { dump_abilities(word, advertised(port)); });
  entry.object("forced", [&](Dump &mode) { dump_forced(mode, forced(port)); });
  entry.object("pause", [&](Dump &state) { dump_pause(state, pause(port)); });
  entry.flag("back_pressure", back_pressure(port));
  entry.text("crossover", crossover_name(crossover(port)));
  entry.flag("eee", eee(port));
  entry.flag("combo", is_combo(port));
  entry.text("medium", medium(port) == VCHIP_MEDIUM_FIBRE ? "fibre" : "copper");
  dump_cable(entry, cable(port));
}

void PortBlock::dump(const char *name, Dump &unit) const {
  unit.objects(name, VCHIP_PORTS,
               [this](Dump &entry, size_t port) { dump_port(entry, static_cast<int32_t>(port)); });
}

}  // namespace vchip
