// SPDX-License-Identifier: MIT
// Trunks: their members, what spreads frames over them, and the frames of the
// protocols that run them.
#include <swctl/mirror_trunk.h>
#include <swctl/platform/sdk.h>

#include <cstddef>

#include "frame/port_mask.h"

namespace {

// Callers build the description themselves: the bytes have their places.
static_assert(sizeof(user_trunk_desc_t) == 40);
static_assert(offsetof(user_trunk_desc_t, ports) == 5);

// By selector.
constexpr uint32_t kHashFields[] = {
    0,
    CHIP_TRUNK_HASH_SOURCE_MAC,
    CHIP_TRUNK_HASH_DESTINATION_MAC,
    CHIP_TRUNK_HASH_SOURCE_MAC | CHIP_TRUNK_HASH_DESTINATION_MAC,
    CHIP_TRUNK_HASH_SOURCE_IP,
    CHIP_TRUNK_HASH_DESTINATION_IP,
    CHIP_TRUNK_HASH_SOURCE_IP | CHIP_TRUNK_HASH_DESTINATION_IP,
};

constexpr uint32_t hash_fields(uint32_t selector) {
  constexpr uint32_t kSelectors = sizeof kHashFields / sizeof kHashFields[0];
  return selector < kSelectors ? kHashFields[selector] : 0;
}

constexpr uint32_t trap_or_drop(uint32_t enable) {
  return enable != 0 ? CHIP_TRAP_TO_CPU : CHIP_TRAP_DROP;
}

uint32_t members_of(const user_trunk_desc_t &description) {
  uint32_t members = 0;
  for (int32_t index = 0; index < description.count && index < USER_TRUNK_PORTS; ++index)
    members |= swctl::unchecked_bit_in_mask(description.ports[index]);
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
  return rtk_trunk_distributionAlgorithmParam_set(0, CHIP_TRUNK_ALGORITHM, hash_fields(selector));
}

int32_t user_trunk_trap_lacp(uint32_t, uint32_t unit, uint32_t enable) {
  const int32_t result =
      rtk_trap_bypassStp_set(unit, CHIP_TRAP_BYPASS_SLOW_PROTOCOLS, enable != 0 ? 1 : 0);
  if (result < 0) return result;
  return rtk_trap_rmaGroupAction_set(unit, CHIP_TRAP_GROUP_LACP, trap_or_drop(enable));
}

int32_t user_eoam_trap_set(uint32_t, uint32_t unit, uint32_t enable) {
  return rtk_trap_rmaGroupAction_set(unit, CHIP_TRAP_GROUP_OAM, trap_or_drop(enable));
}
