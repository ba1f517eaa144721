// SPDX-License-Identifier: MIT
// Trunks: their members, what spreads frames over them, and the frames of the
// protocols that run them.
#include <swctl/mirror_trunk.h>
#include <swctl/platform/sdk.h>

#include <cstddef>

#include "frame/ports.h"

namespace {

// Callers build the description themselves: the bytes have their places.
static_assert(sizeof(user_trunk_desc_t) == 40);
static_assert(offsetof(user_trunk_desc_t, ports) == 5);

constexpr uint32_t kAlgorithm = 0;
constexpr uint32_t kSlowProtocols = 6;  // frame type that may pass a blocked port

// Groups of reserved multicast addresses.
enum AddressGroup : uint32_t { group_oam, group_lacp };
enum Action : uint32_t { action_drop = 1, action_trap = 2 };

// Header fields that the chip can hash.
constexpr uint32_t kSourceMac = 2;
constexpr uint32_t kDestinationMac = 4;
constexpr uint32_t kSourceIp = 8;
constexpr uint32_t kDestinationIp = 16;

constexpr uint32_t kHashFields[] = {
    0,
    kSourceMac,
    kDestinationMac,
    kSourceMac | kDestinationMac,
    kSourceIp,
    kDestinationIp,
    kSourceIp | kDestinationIp,
};

constexpr uint32_t hash_fields(uint32_t selector) {
  constexpr uint32_t kSelectors = sizeof kHashFields / sizeof kHashFields[0];
  return selector < kSelectors ? kHashFields[selector] : 0;
}

constexpr Action trap_or_drop(uint32_t enable) {
  return enable != 0 ? action_trap : action_drop;
}

uint32_t members_of(const user_trunk_desc_t &description) {
  uint32_t members = 0;
  for (int32_t index = 0; index < description.count && index < USER_TRUNK_PORTS; ++index)
    members |= swctl::port_bit(description.ports[index]);
  return members;
}

}  // namespace

int32_t user_trunk_set(uint32_t, uint32_t, uint32_t trunk, user_trunk_desc_t description) {
  const uint32_t members = members_of(description);
  return rtk_trunk_port_set(0, trunk, &members);
}

int32_t user_trunk_destroy(uint32_t, uint32_t, uint32_t trunk) {
  const uint32_t nobody = 0;
  return rtk_trunk_port_set(0, trunk, &nobody);
}

int32_t user_trunk_loadbalance_set(uint32_t, uint32_t, uint32_t, uint32_t selector) {
  return rtk_trunk_distributionAlgorithmParam_set(0, kAlgorithm, hash_fields(selector));
}

int32_t user_trunk_trap_lacp(uint32_t, uint32_t unit, uint32_t enable) {
  const int32_t result = rtk_trap_bypassStp_set(unit, kSlowProtocols, enable != 0 ? 1 : 0);
  if (result < 0) return result;
  return rtk_trap_rmaGroupAction_set(unit, group_lacp, trap_or_drop(enable));
}

int32_t user_eoam_trap_set(uint32_t, uint32_t unit, uint32_t enable) {
  return rtk_trap_rmaGroupAction_set(unit, group_oam, trap_or_drop(enable));
}
