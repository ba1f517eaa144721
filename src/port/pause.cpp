// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include <cstdio>

#include "port/advertised.h"
#include "port/report.h"

namespace {

using swctl::report_read;

int32_t advertised_pause(int32_t port, uint32_t *pause) {
  constexpr uint32_t kBoth = USER_ABILITY_PAUSE | USER_ABILITY_ASYMMETRIC_PAUSE;
  uint32_t ability = 0;
  const int32_t result = swctl::read_advertised("user_port_pause_get", port, &ability);
  if (result >= 0) *pause = (ability & kBoth) == kBoth ? 1 : 0;
  return result;
}

int32_t forced_pause(uint32_t unit, int32_t port, uint32_t *pause) {
  uint32_t speed = 0;
  uint32_t duplex = 0;
  uint32_t flow_control = 0;
  const int32_t result =
      report_read(rtk_port_phyForceModeAbility_get(unit, port, &speed, &duplex, &flow_control));
  if (result >= 0) *pause = flow_control;
  return result;
}

}  // namespace

int32_t user_port_pause_set(uint32_t, uint32_t unit, int32_t port, uint32_t enable) {
  const int32_t result = rtk_port_flowCtrlEnable_set(unit, port, enable);
  if (result < 0) puts("set flowcontorl failed !!!");
  return result;
}

int32_t user_port_pause_get(uint32_t, uint32_t unit, int32_t port, uint32_t *pause) {
  uint32_t autonegotiation = 0;
  const int32_t result = report_read(rtk_port_phyAutoNegoEnable_get(unit, port, &autonegotiation));
  if (result < 0) return result;
  return autonegotiation != 0 ? advertised_pause(port, pause) : forced_pause(unit, port, pause);
}

int32_t user_port_pause_get_stat(uint32_t, uint32_t unit, int32_t port, uint32_t *pause) {
  uint32_t transmit = 0;
  uint32_t receive = 0;
  const int32_t result = report_read(rtk_port_flowctrl_get(unit, port, &transmit, &receive));
  if (result >= 0) *pause = transmit & receive;
  return result;
}
