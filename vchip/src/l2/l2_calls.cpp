// SPDX-License-Identifier: MIT
// The SDK's calls on unicast addresses.
#include <swctl/platform/l2_read.h>
#include <swctl/platform/sdk.h>

#include "chip/chip.h"
#include "common/table.h"
#include "l2/l2_check.h"

using vchip::at_most;
using vchip::change;
using vchip::change_if;
using vchip::first_fault;
using vchip::flag;
using vchip::is_trunk_or_none;
using vchip::look;
using vchip::not_null;
using vchip::on_front_port;
using vchip::on_port;
using vchip::on_station;
using vchip::on_vlan_id;
using vchip::Unit;

namespace {

int32_t next_index(const vchip::AddressTable &table, int32_t index, bool static_too) {
  index = table.next(index);
  while (index != vchip::kNoIndex && !static_too && vchip::is_static(table.entry(index)))
    index = table.next(index);
  return index;
}

int32_t good_entry(const chip_l2_ucast_entry &entry) {
  return first_fault({on_port(entry.port), on_vlan_id(entry.vid), on_station(entry.mac),
                      is_trunk_or_none(entry.trunk)});
}

// Words that a request does not use have to be 0 or are not looked at.
int32_t good_request(const chip_l2_flush_request &request) {
  const bool by_port = request.byInterface != 0 && request.interfaceIsPort != 0;
  const bool by_trunk = request.byInterface != 0 && request.interfaceIsPort == 0;
  const auto number = static_cast<int32_t>(request.portOrTrunk);
  return first_fault({by_port ? on_port(number) : 0, flag(request.byVlan), on_vlan_id(request.vid),
                      flag(request.byInterface), flag(request.interfaceIsPort),
                      by_trunk ? is_trunk_or_none(number) : 0, flag(request.includeStatic),
                      at_most(request.reserved, 0), at_most(request.reserved2, 0)});
}

}  // namespace

int32_t rtk_l2_nextValidAddr_get(uint32_t unit, int32_t *index, uint32_t include_static,
                                 chip_l2_ucast_entry *entry) {
  const int32_t from = index == nullptr ? vchip::kNoIndex : *index;
  return look(
      unit,
      {not_null(index, entry), flag(include_static), vchip::on_scan_index(from, vchip::kAddresses)},
      [=](const Unit &chip) {
        const vchip::AddressTable &table = chip.l2.table();
        const int32_t found = next_index(table, from, include_static != 0);
        if (found == vchip::kNoIndex) return VCHIP_E_L2_ENTRY;
        *index = found;
        *entry = table.entry(found);
        return 0;
      });
}

int32_t swctl_platform_l2_next(uint32_t unit, int32_t from, swctl_platform_l2_address *address) {
  return look(unit, {not_null(address), vchip::search_from(from)}, [=](const Unit &chip) {
    const vchip::AddressTable &table = chip.l2.table();
    const bool within = from < vchip::kAddresses;
    const int32_t found = within ? table.next(from - 1) : vchip::kNoIndex;
    *address = {};
    address->index = found;
    if (found != vchip::kNoIndex) address->entry = table.entry(found);
    return 0;
  });
}

int32_t rtk_l2_addr_add(uint32_t unit, const chip_l2_ucast_entry *entry) {
  const chip_l2_ucast_entry copy = entry == nullptr ? chip_l2_ucast_entry{} : *entry;
  return change_if(unit, {not_null(entry), good_entry(copy)},
                   [&](Unit &chip) { return chip.l2.add(copy); });
}

int32_t rtk_l2_addr_get(uint32_t unit, chip_l2_ucast_entry *entry) {
  const chip_l2_ucast_entry key = entry == nullptr ? chip_l2_ucast_entry{} : *entry;
  return look(unit, {not_null(entry), on_vlan_id(key.vid), on_station(key.mac)},
              [&](const Unit &chip) {
                const vchip::AddressTable &table = chip.l2.table();
                const int32_t index = table.find(key.vid, key.mac);
                if (index == vchip::kNoIndex) return VCHIP_E_L2_ENTRY;
                *entry = table.entry(index);
                return 0;
              });
}

int32_t rtk_l2_addr_del(uint32_t unit, uint32_t vid, const uint8_t *mac) {
  return change_if(unit, {not_null(mac), on_vlan_id(vid), on_station(mac)},
                   [=](Unit &chip) { return chip.l2.remove(vid, mac); });
}

int32_t rtk_l2_ucastAddr_flush(uint32_t unit, const chip_l2_flush_request *request) {
  const chip_l2_flush_request copy = request == nullptr ? chip_l2_flush_request{} : *request;
  return change(unit, {not_null(request), good_request(copy)},
                [&](Unit &chip) { chip.l2.flush(copy); });
}

int32_t rtk_l2_aging_set(uint32_t unit, uint32_t time) {
  return change(unit, {at_most(time, vchip::kMaxAging)},
                [=](Unit &chip) { chip.l2.set_aging(time); });
}

int32_t rtk_l2_aging_get(uint32_t unit, uint32_t *time) {
  return look(unit, {not_null(time)}, [=](const Unit &chip) {
    *time = chip.l2.aging();
    return 0;
  });
}

int32_t rtk_l2_portLimitLearningCntEnable_set(uint32_t unit, int32_t port, uint32_t enable) {
  return change(unit, {on_front_port(port), flag(enable)},
                [=](Unit &chip) { chip.l2.enable_limit(port, enable); });
}

int32_t rtk_l2_portLimitLearningCnt_set(uint32_t unit, int32_t port, int32_t limit) {
  return change(unit,
                {on_front_port(port), at_most(static_cast<uint32_t>(limit), vchip::kMaxLearnLimit)},
                [=](Unit &chip) { chip.l2.set_limit(port, limit); });
}

int32_t rtk_l2_portLimitLearningCnt_get(uint32_t unit, int32_t port, int32_t *limit) {
  return look(unit, {on_front_port(port), not_null(limit)}, [=](const Unit &chip) {
    *limit = chip.l2.limit(port).limit;
    return 0;
  });
}

int32_t rtk_l2_portLearningCnt_get(uint32_t unit, int32_t port, uint32_t *count) {
  return look(unit, {on_port(port), not_null(count)}, [=](const Unit &chip) {
    *count = chip.l2.table().learned(port);
    return 0;
  });
}
