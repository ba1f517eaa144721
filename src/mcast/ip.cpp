// SPDX-License-Identifier: MIT
// The IP multicast table and how it is looked up.
#include <swctl/mcast.h>
#include <swctl/platform/sdk.h>

#include <cstddef>
#include <cstring>

#include "frame/port_mask.h"

namespace {

static_assert(sizeof(chip_ip_mcast_entry) == 7 * 4);
static_assert(offsetof(chip_ip_mcast_entry, address_b) == 4);
static_assert(offsetof(chip_ip_mcast_entry, address_a) == 8);
static_assert(offsetof(chip_ip_mcast_entry, ports) == 12);
static_assert(sizeof(chip_ip6_mcast_entry) == 52);
static_assert(offsetof(chip_ip6_mcast_entry, address_b) == 2);
static_assert(offsetof(chip_ip6_mcast_entry, address_a) == 18);
static_assert(offsetof(chip_ip6_mcast_entry, ports) == 36);

constexpr uint32_t mode_if(uint32_t enable) {
  return enable != 0 ? 1 : 0;
}

constexpr chip_ip_mcast_entry ip_entry(uint32_t address_a, uint32_t address_b, uint32_t vid,
                                       const user_pbmp_t &ports) {
  return {static_cast<uint16_t>(vid), 0, address_b, address_a, swctl::mask_of(ports), {}};
}

chip_ip6_address ip6_address(const uint8_t *bytes) {
  chip_ip6_address address;
  memcpy(address.bytes, bytes, sizeof address.bytes);
  return address;
}

}  // namespace

int32_t User_ip_mcast_add(uint32_t unit, uint32_t address_a, uint32_t address_b, uint32_t vid,
                          user_pbmp_t ports) {
  const chip_ip_mcast_entry entry = ip_entry(address_a, address_b, vid, ports);
  return rtk_l2_ipMcastAddr_add(unit, &entry);
}

int32_t User_ip_mcast_set(uint32_t unit, uint32_t address_a, uint32_t address_b, uint32_t vid,
                          user_pbmp_t ports) {
  const chip_ip_mcast_entry entry = ip_entry(address_a, address_b, vid, ports);
  return rtk_l2_ipMcastAddr_set(unit, &entry);
}

int32_t User_ip_mcast_del(uint32_t unit, uint32_t address_a, uint32_t address_b, uint32_t vid) {
  return rtk_l2_ipMcastAddr_del(unit, address_a, address_b, static_cast<uint16_t>(vid));
}

int32_t User_ip6_mcast_add(uint32_t unit, const uint8_t *address_a, const uint8_t *address_b,
                           uint32_t vid, user_pbmp_t ports) {
  chip_ip6_mcast_entry entry = {};
  entry.vid = static_cast<uint16_t>(vid);
  entry.address_b = ip6_address(address_b);
  entry.address_a = ip6_address(address_a);
  entry.ports = swctl::mask_of(ports);
  return rtk_l2_ip6McastAddr_add(unit, &entry);
}

int32_t User_ip6_mcast_del(uint32_t unit, const uint8_t *address_a, const uint8_t *address_b,
                           uint32_t vid) {
  return rtk_l2_ip6McastAddr_del(unit, ip6_address(address_a), ip6_address(address_b),
                                 static_cast<uint16_t>(vid));
}

int32_t User_switch_ipmc_set(uint32_t, uint32_t unit, uint32_t enable) {
  return rtk_l2_ipmcMode_set(unit, mode_if(enable));
}

int32_t User_switch_ip6mc_mode_set(uint32_t, uint32_t unit, uint32_t enable) {
  return rtk_l2_ip6mcMode_set(unit, mode_if(enable));
}

int32_t User_switch_ipmc_lookup_miss_action(uint32_t, uint32_t unit, int32_t port,
                                            uint32_t action) {
  return rtk_l2_portLookupMissAction_set(unit, port, CHIP_LOOKUP_IP_MCAST, action);
}

int32_t User_switch_ip6mc_lookup_miss_action(uint32_t, uint32_t unit, int32_t port,
                                             uint32_t action) {
  return rtk_l2_portLookupMissAction_set(unit, port, CHIP_LOOKUP_IP6_MCAST, action);
}
