// SPDX-License-Identifier: MIT
// The SDK's cable test, and what happens to the wires from outside.
#include <swctl-vchip/ability.h>
#include <swctl/platform/sdk.h>

#include "chip/chip.h"
#include "common/check.h"

namespace {

using vchip::change;
using vchip::change_if;
using vchip::look;
using vchip::not_null;
using vchip::on_front_port;
using vchip::Unit;

// Ports to test: at least one, none without wires.
int32_t on_copper_ports(const Unit &chip, uint32_t mask) {
  for (int32_t port = 0; port < VCHIP_CPU_PORT; ++port)
    if ((mask >> port & 1) != 0 && chip.port.medium(port) != VCHIP_MEDIUM_COPPER)
      return VCHIP_E_MEDIUM;
  return 0;
}

int32_t on_testable_ports(uint32_t mask) {
  if (mask == 0) return VCHIP_E_PORT;
  if (vchip::on_ports(mask) != 0) return VCHIP_E_PORT;
  return (mask & vchip::kCpuPortBit) != 0 ? VCHIP_E_CPU_PORT : 0;
}

void test_ports(Unit &chip, uint32_t mask) {
  for (int32_t port = 0; port < VCHIP_CPU_PORT; ++port)
    if ((mask >> port & 1) != 0) chip.cable.test(port, chip.port.cable(port).plugged);
}

}  // namespace

int32_t rtk_diag_rtctEnable_set(uint32_t unit, const uint32_t *mask) {
  const uint32_t ports = mask == nullptr ? 0 : *mask;
  return change_if(unit, {not_null(mask), on_testable_ports(ports)}, [=](Unit &chip) {
    const int32_t refused = on_copper_ports(chip, ports);
    if (refused == 0) test_ports(chip, ports);
    return refused;
  });
}

int32_t rtk_diag_portRtctResult_get(uint32_t unit, int32_t port, chip_cable_test_t *result) {
  return look(unit, {on_front_port(port), not_null(result)}, [=](const Unit &chip) {
    if (!chip.cable.tested(port)) return VCHIP_E_NO_TEST;
    *result = chip.cable.result(port);
    return 0;
  });
}

int32_t vchip_pair_set(uint32_t unit, int32_t port, uint32_t pair, uint32_t faults,
                       uint32_t length) {
  return change(unit,
                {on_front_port(port), vchip::below(pair, VCHIP_PAIRS),
                 vchip::at_most(faults, VCHIP_FAULTS_ALL)},
                [=](Unit &chip) {
                  chip.cable.set_pair(port, pair, {faults, length});
                });
}
