// SPDX-License-Identifier: MIT
// The SDK's calls on multicast groups.
#include <swctl/platform/l2_read.h>
#include <swctl/platform/sdk.h>

#include "chip/chip.h"
#include "common/table.h"
#include "l2/l2_check.h"

using vchip::below;
using vchip::change_if;
using vchip::first_fault;
using vchip::look;
using vchip::not_null;
using vchip::on_group;
using vchip::on_ports;
using vchip::on_vlan_id;
using vchip::Unit;

namespace {

int32_t good_entry(const chip_l2_mcast_entry &entry) {
  return first_fault({on_ports(entry.portmask), below(entry.fwdIndex, vchip::kPortMasks),
                      on_vlan_id(entry.vid), on_group(entry.mac)});
}

}  // namespace

int32_t rtk_l2_nextValidMcastAddr_get(uint32_t unit, int32_t *index, chip_l2_mcast_entry *entry) {
  const int32_t from = index == nullptr ? vchip::kNoIndex : *index;
  return look(unit, {not_null(index, entry), vchip::on_scan_index(from, vchip::kGroups)},
              [=](const Unit &chip) {
                const int32_t found = chip.group.next(from);
                if (found == vchip::kNoIndex) return VCHIP_E_L2_ENTRY;
                *index = found;
                *entry = chip.group.entry(found);
                return 0;
              });
}

int32_t swctl_platform_l2_mcast_next(uint32_t unit, int32_t from, swctl_platform_l2_group *group) {
  return look(unit, {not_null(group), vchip::search_from(from)}, [=](const Unit &chip) {
    const bool within = from < vchip::kGroups;
    const int32_t found = within ? chip.group.next(from - 1) : vchip::kNoIndex;
    *group = {};
    group->index = found;
    if (found != vchip::kNoIndex) group->entry = chip.group.entry(found);
    return 0;
  });
}

int32_t rtk_l2_mcastAddr_add(uint32_t unit, const chip_l2_mcast_entry *entry) {
  const chip_l2_mcast_entry copy = entry == nullptr ? chip_l2_mcast_entry{} : *entry;
  return change_if(unit, {not_null(entry), entry == nullptr ? 0 : good_entry(copy)},
                   [&](Unit &chip) { return chip.group.add(copy); });
}

int32_t rtk_l2_mcastAddr_get(uint32_t unit, chip_l2_mcast_entry *entry) {
  const chip_l2_mcast_entry key = entry == nullptr ? chip_l2_mcast_entry{} : *entry;
  return look(unit, {not_null(entry), on_vlan_id(key.vid), on_group(key.mac)},
              [&](const Unit &chip) {
                const int32_t index = chip.group.find(key.vid, key.mac);
                if (index == vchip::kNoIndex) return VCHIP_E_L2_ENTRY;
                *entry = chip.group.entry(index);
                return 0;
              });
}

int32_t rtk_l2_mcastAddr_del(uint32_t unit, uint32_t vid, const uint8_t *mac) {
  return change_if(unit, {not_null(mac), on_vlan_id(vid), on_group(mac)},
                   [=](Unit &chip) { return chip.group.remove(vid, mac); });
}
