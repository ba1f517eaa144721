// SPDX-License-Identifier: MIT
// The SDK's calls on IP multicast.
#include <swctl/platform/mcast_read.h>
#include <swctl/platform/sdk.h>

#include "chip/chip.h"
#include "common/check.h"
#include "common/table.h"

using vchip::at_most;
using vchip::change;
using vchip::change_if;
using vchip::look;
using vchip::not_null;
using vchip::on_port;
using vchip::Unit;

namespace {

// Address b is the group and address a the source; any source but a group will
// do, and zeros stand for every source.
template <typename Entry>
int32_t possible_key(const Entry &entry) {
  return vchip::on_vlan(entry.vid) == 0 && vchip::is_group(entry.address_b) &&
                 !vchip::is_group(entry.address_a)
             ? 0
             : VCHIP_E_VALUE;
}

// What has no meaning must be 0, so that a record that was not cleared shows.
template <typename Entry>
int32_t possible(const Entry *entry) {
  if (entry == nullptr) return 0;
  if (vchip::on_ports(entry->ports) != 0) return VCHIP_E_PORT;
  if ((entry->rest[0] | entry->rest[1] | entry->rest[2] | entry->zero) != 0) return VCHIP_E_VALUE;
  return possible_key(*entry);
}

template <typename Table, typename Found>
void find_next(const Table &table, int32_t from, Found *found) {
  *found = {};
  found->index = vchip::first_used(from, static_cast<uint32_t>(table.size()),
                                   [&](uint32_t index) { return table[index].used != 0; });
  if (found->index >= 0) found->entry = table[static_cast<size_t>(found->index)].entry;
}

}  // namespace

int32_t rtk_l2_ipMcastAddr_add(uint32_t unit, const chip_ip_mcast_entry *entry) {
  return change_if(unit, {not_null(entry), possible(entry)},
                   [=](Unit &chip) { return chip.mcast_ip.add(*entry); });
}

int32_t rtk_l2_ipMcastAddr_set(uint32_t unit, const chip_ip_mcast_entry *entry) {
  return change_if(unit, {not_null(entry), possible(entry)},
                   [=](Unit &chip) { return chip.mcast_ip.set(*entry); });
}

int32_t rtk_l2_ipMcastAddr_del(uint32_t unit, uint32_t address_a, uint32_t address_b,
                               uint32_t vid) {
  const chip_ip_mcast_entry key = {static_cast<uint16_t>(vid), 0, address_b, address_a, 0, {}};
  return change_if(unit, {at_most(vid, vchip::kLastVlan), possible_key(key)},
                   [=](Unit &chip) { return chip.mcast_ip.remove(key); });
}

int32_t rtk_l2_ip6McastAddr_add(uint32_t unit, const chip_ip6_mcast_entry *entry) {
  return change_if(unit, {not_null(entry), possible(entry)},
                   [=](Unit &chip) { return chip.mcast_ip.add(*entry); });
}

int32_t rtk_l2_ip6McastAddr_del(uint32_t unit, chip_ip6_address address_a,
                                chip_ip6_address address_b, uint32_t vid) {
  const chip_ip6_mcast_entry key = {static_cast<uint16_t>(vid), address_b, address_a, 0, 0, {}};
  return change_if(unit, {at_most(vid, vchip::kLastVlan), possible_key(key)},
                   [=](Unit &chip) { return chip.mcast_ip.remove(key); });
}

int32_t rtk_l2_ipmcMode_set(uint32_t unit, uint32_t mode) {
  return change(unit, {at_most(mode, vchip::kMaxMcastMode)},
                [=](Unit &chip) { chip.mcast_ip.set_ip_mode(mode); });
}

int32_t rtk_l2_ip6mcMode_set(uint32_t unit, uint32_t mode) {
  return change(unit, {at_most(mode, vchip::kMaxMcastMode)},
                [=](Unit &chip) { chip.mcast_ip.set_ip6_mode(mode); });
}

int32_t rtk_l2_portLookupMissAction_set(uint32_t unit, int32_t port, uint32_t type,
                                        uint32_t action) {
  return change(
      unit, {on_port(port), vchip::below(type, vchip::kMissTypes), vchip::is_frame_action(action)},
      [=](Unit &chip) { chip.mcast_ip.set_miss_action(port, type, vchip::FrameAction{action}); });
}

int32_t swctl_platform_ip_mcast_next(uint32_t unit, int32_t from, swctl_platform_ip_mcast *entry) {
  return look(unit, {not_null(entry), vchip::search_from(from)}, [=](const Unit &chip) {
    find_next(chip.mcast_ip.ip(), from, entry);
    return 0;
  });
}

int32_t swctl_platform_ip6_mcast_next(uint32_t unit, int32_t from,
                                      swctl_platform_ip6_mcast *entry) {
  return look(unit, {not_null(entry), vchip::search_from(from)}, [=](const Unit &chip) {
    find_next(chip.mcast_ip.ip6(), from, entry);
    return 0;
  });
}

int32_t swctl_platform_ip_mcast_mode_get(uint32_t unit, uint32_t *mode) {
  return look(unit, {not_null(mode)}, [=](const Unit &chip) {
    *mode = chip.mcast_ip.ip_mode();
    return 0;
  });
}

int32_t swctl_platform_ip6_mcast_mode_get(uint32_t unit, uint32_t *mode) {
  return look(unit, {not_null(mode)}, [=](const Unit &chip) {
    *mode = chip.mcast_ip.ip6_mode();
    return 0;
  });
}

int32_t swctl_platform_lookup_miss_get(uint32_t unit, int32_t port, uint32_t type,
                                       uint32_t *action) {
  return look(unit, {on_port(port), not_null(action), vchip::below(type, vchip::kMissTypes)},
              [=](const Unit &chip) {
                *action = number_of(chip.mcast_ip.miss_actions(port)[type]);
                return 0;
              });
}
