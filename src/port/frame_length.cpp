// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

int32_t user_port_jumboframe_set(uint32_t, uint32_t unit, int32_t, uint32_t length) {
  const int32_t first = rtk_switch_maxPktLenLinkSpeed_set(unit, 1, length);
  const int32_t second = rtk_switch_maxPktLenLinkSpeed_set(unit, 0, length);
  return first | second;
}

int32_t user_port_jumboframe_get(uint32_t, uint32_t unit, int32_t, uint32_t *length) {
  return rtk_switch_maxPktLenLinkSpeed_get(unit, 1, length);
}
