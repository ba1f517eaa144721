// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "frame/front_ports.h"

namespace {

constexpr uint32_t kCustomerTpid = 0x8100;
constexpr int32_t kCpuInterface = 0;

// Ports that this process has switched into double-tag mode, less those that it
// has switched back. The first and the last change the whole switch over.
// There is no floor: a port that another process switched into the mode, or
// this one before it was started again, may be switched back here and was
// never counted. The count is then -1, and it takes two ports until the
// switch is changed over.
int32_t double_tag_ports;

int32_t change_port_over(uint32_t unit, int32_t port) {
  int32_t result = rtk_vlan_portIgrTagKeepEnable_set(unit, port, 1, 0);
  if (result < 0) return result;
  result = rtk_vlan_portEgrTagKeepEnable_set(unit, port, 1, 1);
  if (result < 0) return result;
  return rtk_vlan_portEgrOuterTagSts_set(unit, port, 1);
}

int32_t change_port_back(uint32_t unit, int32_t port) {
  int32_t result = rtk_vlan_portEgrOuterTagSts_set(unit, port, 0);
  if (result < 0) return result;
  result = rtk_vlan_portIgrTagKeepEnable_set(unit, port, 0, 0);
  if (result < 0) return result;
  return rtk_vlan_portEgrTagKeepEnable_set(unit, port, 0, 0);
}

int32_t change_switch_over(uint32_t unit) {
  int32_t result =
      swctl::each_front_port([unit](int32_t port) { return change_port_over(unit, port); });
  if (result < 0) return result;
  result = rtk_vlan_portIgrTagKeepEnable_set(unit, adp_intf_2_phy_id(kCpuInterface), 1, 0);
  if (result < 0) return result;
  return rtk_vlan_outerTpidEntry_set(unit, 0, kCustomerTpid);
}

int32_t change_switch_back(uint32_t unit) {
  const int32_t result =
      swctl::each_front_port([unit](int32_t port) { return change_port_back(unit, port); });
  if (result < 0) return result;
  return rtk_vlan_portIgrTagKeepEnable_set(unit, adp_intf_2_phy_id(kCpuInterface), 0, 0);
}

// `count` is what double_tag_ports was when the change began, whatever other
// threads have made of it since.
int32_t enter(uint32_t unit, int32_t port, int32_t count) {
  int32_t result = count == 0 ? change_switch_over(unit) : 0;
  if (result < 0) return result;
  result = rtk_l2_vlanMode_set(unit, port, USER_DTAG_ON);
  if (result < 0) return result;
  result = rtk_vlan_portIgrTagKeepEnable_set(unit, port, 0, 1);
  if (result >= 0) ++double_tag_ports;
  return result;
}

int32_t leave(uint32_t unit, int32_t port, int32_t count) {
  int32_t result = rtk_l2_vlanMode_set(unit, port, USER_DTAG_OFF);
  if (result < 0) return result;
  result = rtk_vlan_portIgrTagKeepEnable_set(unit, port, 1, 0);
  if (result >= 0 && count == 1) result = change_switch_back(unit);
  if (result >= 0) --double_tag_ports;
  return result;
}

}  // namespace

int32_t user_port_dtag_mode_set(uint32_t, uint32_t unit, int32_t port, uint32_t mode) {
  uint32_t present = 0;
  rtk_l2_vlanMode_get(unit, port, &present);
  const uint32_t wanted = mode != 0 ? USER_DTAG_ON : USER_DTAG_OFF;
  if (present == wanted) return 0;
  const int32_t count = double_tag_ports;
  return wanted == USER_DTAG_ON ? enter(unit, port, count) : leave(unit, port, count);
}

int32_t user_port_dtag_mode_get(uint32_t, uint32_t unit, int32_t port, uint32_t *mode) {
  *mode = USER_DTAG_OFF;
  uint32_t present = 0;
  const int32_t result = rtk_l2_vlanMode_get(unit, port, &present);
  if (result >= 0 && present == USER_DTAG_ON) *mode = USER_DTAG_ON;
  return result;
}
