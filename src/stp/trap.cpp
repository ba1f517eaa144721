// SPDX-License-Identifier: MIT
// Which protocol frames the processor gets.
#include <swctl/frame.h>
#include <swctl/platform/sdk.h>
#include <swctl/stp.h>

#include <cstring>

#include "frame/front_ports.h"

namespace {

// The SDK's management-frame types and actions.
enum FrameType : uint32_t {
  frame_mld = 4,
  frame_igmp = 5,
  frame_bpdu = 19,
  frame_lldp = 21,
  frame_own_mac = 24
};
enum Action : uint32_t { action_forward = 0, action_trap = 2 };

constexpr size_t kMacBytes = 6;

constexpr Action trap_if(uint32_t enable) {
  return enable != 0 ? action_trap : action_forward;
}

constexpr Action forward_if(uint32_t forward) {
  return forward != 0 ? action_forward : action_trap;
}

int32_t set_on_front_ports(uint32_t unit, FrameType type, Action action) {
  return swctl::every_front_port(
      [=](int32_t port) { return rtk_trap_portMgmtFrameAction_set(unit, port, type, action); });
}

}  // namespace

int32_t user_igmp_trap_to_cpu(uint32_t, uint32_t unit, uint32_t enable) {
  return rtk_trap_mgmtFrameAction_set(unit, frame_igmp, trap_if(enable));
}

int32_t user_mld_trap_to_cpu(uint32_t, uint32_t unit, uint32_t enable) {
  return rtk_trap_mgmtFrameAction_set(unit, frame_mld, trap_if(enable));
}

int32_t user_selfmac_trap_to_cpu(uint32_t, uint32_t unit, uint32_t enable) {
  return rtk_trap_mgmtFrameAction_set(unit, frame_own_mac, trap_if(enable));
}

int32_t user_stg_init(uint32_t, uint32_t unit) {
  set_on_front_ports(unit, frame_bpdu, action_forward);
  return 0;
}

int32_t user_stg_set_bpdu_forward(uint32_t, uint32_t unit, uint32_t forward) {
  return set_on_front_ports(unit, frame_bpdu, forward_if(forward));
}

int32_t user_lldp_init(uint32_t, uint32_t unit) {
  return set_on_front_ports(unit, frame_lldp, action_forward);
}

int32_t user_lldp_set_bpdu_forward(uint32_t, uint32_t unit, uint32_t forward, int32_t interface) {
  const Action action = forward_if(forward);
  if (interface == 0) return set_on_front_ports(unit, frame_lldp, action);
  return rtk_trap_portMgmtFrameAction_set(unit, adp_intf_2_phy_id(interface), frame_lldp, action);
}

int32_t user_l2_bpdu_set(uint32_t, uint32_t, uint32_t, const uint8_t *mac) {
  const volatile uint8_t *bytes = mac;
  for (size_t index = 0; index < kMacBytes; ++index) static_cast<void>(bytes[index]);
  return 0;
}

int32_t user_l2_bpdu_get(uint32_t, uint32_t, uint32_t, uint8_t *mac) {
  memcpy(mac, g_tmpBuffer, kMacBytes);
  return 0;
}

int32_t user_l2_voice_vlan_traverse(user_l2_walk_callback_t callback, void *data) {
  return rtk_l2_traverse(0, callback, data);
}
