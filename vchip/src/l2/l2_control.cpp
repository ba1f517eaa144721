// SPDX-License-Identifier: MIT
// What the world does to the address table.
#include <swctl-vchip/vchip.h>

#include "chip/chip.h"
#include "l2/l2_check.h"

using vchip::change;
using vchip::change_if;
using vchip::is_trunk_or_none;
using vchip::not_null;
using vchip::on_port;
using vchip::on_station;
using vchip::on_vlan_id;

namespace {

bool is_elsewhere(const chip_l2_ucast_entry &entry, int32_t port) {
  return entry.port != port && (entry.flags & vchip::kViolationIgnoredFlag) == 0;
}

// What a frame with this source does, and why it does nothing.
int32_t learn(vchip::L2Block &block, const vchip::Source &source) {
  const int32_t index = block.table().find(source.vid, source.mac);
  vchip::Learn learn = block.plan(index, source);
  // Here a station is at one port of its trunk, and not at the others.
  if (learn == vchip::Learn::nothing && is_elsewhere(block.table().entry(index), source.port))
    learn = vchip::Learn::violation;
  block.apply(learn, index, source);
  if (learn == vchip::Learn::full) return VCHIP_E_L2_FULL;
  return learn == vchip::Learn::limit ? VCHIP_E_L2_LIMIT : 0;
}

}  // namespace

int32_t vchip_station_learn(uint32_t unit, int32_t port, const vchip_station_t *station) {
  const vchip_station_t from = station == nullptr ? vchip_station_t{} : *station;
  return change_if(unit,
                   {on_port(port), not_null(station), on_vlan_id(from.vid), on_station(from.mac),
                    is_trunk_or_none(from.trunk)},
                   [&](vchip::Unit &chip) {
                     return learn(chip.l2, {from.vid, from.mac, port, from.trunk});
                   });
}

int32_t vchip_l2_mark(uint32_t unit, uint32_t vid, const uint8_t *mac, uint32_t state,
                      uint32_t aux) {
  return change_if(unit, {not_null(mac), on_vlan_id(vid), on_station(mac)},
                   [=](vchip::Unit &chip) { return chip.l2.mark(vid, mac, state, aux); });
}

int32_t vchip_time_pass(uint32_t unit, uint32_t seconds) {
  return change(unit, {},
                [=](vchip::Unit &chip) { chip.l2.pass(seconds * vchip::kNanosecondsPerSecond); });
}
