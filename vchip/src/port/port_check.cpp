// SPDX-License-Identifier: MIT
#include <swctl-vchip/ability.h>

#include <bit>

#include "common/board.h"
#include "document/findings.h"
#include "port/cable_block.h"
#include "port/port_block.h"

namespace vchip {
namespace {

constexpr uint32_t kHighestFault = VCHIP_FAULTS_ALL;

void check_wires(Findings &findings, const WirePair &wires) {
  findings.at_most("faults", wires.faults, kHighestFault);
  findings.any("length", wires.length);
}

}  // namespace

// A partner has a mode, and a forced one just one.
void PortBlock::check_cable(Findings &findings, const Port &port) const {
  findings.bits("cable", port.cable, VCHIP_ABILITY_ALL | kPlugged | kNegotiates);
  const int modes = std::popcount(port.cable & VCHIP_ABILITY_MODES);
  const bool negotiates = (port.cable & kNegotiates) != 0;
  const bool plugged = (port.cable & kPlugged) != 0 && (negotiates ? modes >= 1 : modes == 1);
  findings.rule(port.cable == 0 || plugged, "cable", "is neither a partner nor none");
}

// The CPU port has no transceiver: its words stay as after power-on.
void PortBlock::check(Findings &findings) const {
  findings.each("ports", ports_, [&](const Port &port, size_t number) {
    const bool front = number != VCHIP_CPU_PORT;
    const bool combo = is_combo(static_cast<int32_t>(number));
    findings.flag("admin", port.admin);
    findings.in("autonegotiation", port.autonegotiation, front ? 0 : 1, 1);
    findings.bits("advertised", port.advertised, VCHIP_ABILITY_ALL);
    findings.at_most("forced_speed", port.forced_speed, VCHIP_SPEED_MAX);
    findings.flag("forced_duplex", port.forced_duplex);
    findings.at_most("forced_flow_control", port.forced_flow_control, front ? 1 : 0);
    findings.at_most("medium", port.medium, combo ? VCHIP_MEDIUM_FIBRE : VCHIP_MEDIUM_COPPER);
    findings.flag("loopback", port.loopback);
    findings.at_most("back_pressure", port.back_pressure, front ? 1 : 0);
    findings.at_most("crossover", port.crossover, front ? VCHIP_CROSSOVER_CROSSED : 0);
    findings.at_most("eee", port.eee, front ? 1 : 0);
    check_cable(findings, port);
    if (front) return;
    findings.is("advertised", port.advertised, VCHIP_ABILITY_USUAL);
    findings.is("forced_speed", port.forced_speed, VCHIP_SPEED_1000);
    findings.is("forced_duplex", port.forced_duplex, VCHIP_DUPLEX_FULL);
    findings.is("cable", port.cable, 0);
  });
}

// A test finds what was wrong then, or open wires where there is no cable.
void CableBlock::check(Findings &findings) const {
  findings.each("ports", ports_, [&](const Port &port, size_t) {
    findings.each("pairs", port.pairs,
                  [&](const WirePair &wires, size_t) { check_wires(findings, wires); });
    findings.flag("tested", port.tested);
    findings.each("found", port.found, [&](const WirePair &wires, size_t) {
      check_wires(findings, wires);
      findings.rule(port.tested != 0 || (wires.faults | wires.length) == 0, "faults",
                    "was found without a test");
    });
  });
}

}  // namespace vchip
