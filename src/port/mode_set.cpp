// SPDX-License-Identifier: MIT
// Forcing a port's speed and duplex. Both setters first learn which flow
// control is in force, so that forcing a mode does not change it.
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include <cstdio>

#include "port/report.h"
#include "port/speed_code.h"

namespace {

using swctl::report_read;

int32_t forced_flow_control(uint32_t unit, int32_t port, uint32_t *flow_control) {
  uint32_t speed = 0;
  uint32_t duplex = 0;
  return report_read(rtk_port_phyForceModeAbility_get(unit, port, &speed, &duplex, flow_control));
}

uint32_t advertised_flow_control(uint32_t unit, int32_t port) {
  uint32_t ability = 0;
  if (rtk_port_phyAutoNegoAbility_get(unit, port, &ability) < 0) return 0;
  return (ability & USER_ABILITY_PAUSE) != 0 ? 1 : 0;
}

int32_t read_flow_control(uint32_t unit, int32_t port, uint32_t *flow_control) {
  uint32_t autonegotiation = 0;
  const int32_t result = report_read(rtk_port_phyAutoNegoEnable_get(unit, port, &autonegotiation));
  if (result < 0) return result;
  if (autonegotiation == 0) return forced_flow_control(unit, port, flow_control);
  *flow_control = advertised_flow_control(unit, port);
  return result;
}

}  // namespace

int32_t user_port_speed_set(uint32_t, uint32_t unit, int32_t port, uint32_t speed,
                            uint32_t duplex) {
  uint32_t flow_control = 0;
  int32_t result = read_flow_control(unit, port, &flow_control);
  if (result < 0) return result;
  result = rtk_port_phyAutoNegoEnable_set(unit, port, 0);
  if (result < 0) return result;
  return rtk_port_phyForceModeAbility_set(unit, port, swctl::speed_code(speed), duplex,
                                          flow_control);
}

int32_t user_port_duplex_set(uint32_t, uint32_t unit, int32_t port, uint32_t duplex,
                             uint32_t speed) {
  uint32_t flow_control = 0;
  int32_t result = read_flow_control(unit, port, &flow_control);
  if (result < 0) return result;
  result = rtk_port_phyAutoNegoEnable_set(unit, port, 0);
  if (result < 0) {
    puts("set port autonego enable failed!!!");
    return result;
  }
  return rtk_port_phyForceModeAbility_set(unit, port, speed, duplex, flow_control);
}
