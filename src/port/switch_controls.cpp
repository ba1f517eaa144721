// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "frame/front_ports.h"
#include "port/storm_burst.h"

int32_t user_port_init(uint32_t, uint32_t unit) {
  rtk_switch_maxPktLenTagLenCntIncEnable_set(unit, 0);
  rtk_rate_stormControlRateMode_set(unit, 0);
  swctl::set_default_bursts(unit);
  return 0;
}

int32_t user_port_jumboframe_set(uint32_t, uint32_t unit, int32_t, uint32_t length) {
  const int32_t first = rtk_switch_maxPktLenLinkSpeed_set(unit, 1, length);
  const int32_t second = rtk_switch_maxPktLenLinkSpeed_set(unit, 0, length);
  return first | second;
}

int32_t user_port_jumboframe_get(uint32_t, uint32_t unit, int32_t, uint32_t *length) {
  return rtk_switch_maxPktLenLinkSpeed_get(unit, 1, length);
}

int32_t user_dos_attack_prevent_init(uint32_t, uint32_t unit) {
  return swctl::each_front_port(
      [unit](int32_t port) { return rtk_sec_portAttackPreventEnable_set(unit, port, 1); });
}

int32_t user_dos_attack_prevent_action_set(uint32_t, uint32_t unit, uint32_t type,
                                           uint32_t action) {
  return rtk_sec_attackPreventAction_set(unit, type, action != 0 ? 1 : 0);
}

int32_t user_dos_attack_prevent_action_get(uint32_t, uint32_t, uint32_t type, uint32_t *action) {
  uint32_t value = 0;
  // Unit 0 for every caller: programs have come to depend on it.
  const int32_t result = rtk_sec_attackPreventAction_get(0, type, &value);
  if (result < 0) return result;
  *action = value != 0 ? 1 : 0;
  return 0;
}

int32_t user_eee_portEnable_set(uint32_t, uint32_t unit, int32_t port, uint32_t enable) {
  return rtk_eee_portEnable_set(unit, port, enable);
}

int32_t user_eee_portEnable_get(uint32_t, uint32_t unit, int32_t port, uint32_t *enable) {
  return rtk_eee_portEnable_get(unit, port, enable);
}

int32_t user_switch_pkt2CpuTypeFormat_set(uint32_t, uint32_t unit, uint32_t type, uint32_t format) {
  return rtk_switch_pkt2CpuTypeFormat_set(unit, type, format);
}
