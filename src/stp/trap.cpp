// SPDX-License-Identifier: MIT
// Which protocol frames the processor gets.
#include <swctl/frame.h>
#include <swctl/platform/sdk.h>
#include <swctl/stp.h>

#include <cstring>

#include "frame/front_ports.h"

namespace {

constexpr size_t kMacBytes = 6;

constexpr uint32_t trap_if(uint32_t enable) {
  return enable != 0 ? CHIP_TRAP_TO_CPU : CHIP_TRAP_FORWARD;
}

constexpr uint32_t forward_if(uint32_t forward) {
  return forward != 0 ? CHIP_TRAP_FORWARD : CHIP_TRAP_TO_CPU;
}

int32_t set_on_front_ports(uint32_t unit, uint32_t type, uint32_t action) {
  return swctl::every_front_port(
      [=](int32_t port) { return rtk_trap_portMgmtFrameAction_set(unit, port, type, action); });
}

}  // namespace

int32_t user_igmp_trap_to_cpu(uint32_t, uint32_t unit, uint32_t enable) {
  return rtk_trap_mgmtFrameAction_set(unit, CHIP_TRAP_FRAME_IGMP, trap_if(enable));
}

int32_t user_mld_trap_to_cpu(uint32_t, uint32_t unit, uint32_t enable) {
  return rtk_trap_mgmtFrameAction_set(unit, CHIP_TRAP_FRAME_MLD, trap_if(enable));
}

int32_t user_selfmac_trap_to_cpu(uint32_t, uint32_t unit, uint32_t enable) {
  return rtk_trap_mgmtFrameAction_set(unit, CHIP_TRAP_FRAME_OWN_MAC, trap_if(enable));
}

int32_t user_stg_init(uint32_t, uint32_t unit) {
  set_on_front_ports(unit, CHIP_TRAP_FRAME_BPDU, CHIP_TRAP_FORWARD);
  return 0;
}

int32_t user_stg_set_bpdu_forward(uint32_t, uint32_t unit, uint32_t forward) {
  return set_on_front_ports(unit, CHIP_TRAP_FRAME_BPDU, forward_if(forward));
}

int32_t user_lldp_init(uint32_t, uint32_t unit) {
  return set_on_front_ports(unit, CHIP_TRAP_FRAME_LLDP, CHIP_TRAP_FORWARD);
}

int32_t user_lldp_set_bpdu_forward(uint32_t, uint32_t unit, uint32_t forward, int32_t interface) {
  const uint32_t action = forward_if(forward);
  if (interface == 0) return set_on_front_ports(unit, CHIP_TRAP_FRAME_LLDP, action);
  return rtk_trap_portMgmtFrameAction_set(unit, adp_intf_2_phy_id(interface), CHIP_TRAP_FRAME_LLDP,
                                          action);
}

int32_t user_l2_bpdu_set(uint32_t, uint32_t, uint32_t, const uint8_t *mac) {
  // Read and forgotten: a bad address ends the program here, as it always has.
  const volatile uint8_t *bytes = mac;
  for (size_t index = 0; index < kMacBytes; ++index) static_cast<void>(bytes[index]);
  return 0;
}

int32_t user_l2_bpdu_get(uint32_t, uint32_t, uint32_t, uint8_t *mac) {
  memcpy(mac, g_tmpBuffer, kMacBytes);
  return 0;
}
