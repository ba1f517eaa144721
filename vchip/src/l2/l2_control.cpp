// SPDX-License-Identifier: MIT
// What happens to the address table from outside: frames and time.
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

// Here a station is at one port of its trunk: at another port of it, an entry
// that was learned moves, and one that is bound is violated.
vchip::Learn plan(const vchip::L2Block &block, int32_t index, const vchip::Source &source) {
  const vchip::Learn learn = block.plan(index, source);
  if (index == vchip::kNoIndex || block.table().entry(index).port == source.port) return learn;
  if (vchip::is_static(block.table().entry(index))) {
    const uint32_t flags = block.table().entry(index).flags;
    const bool noted = (flags & vchip::kViolationIgnoredFlag) == 0;
    return noted ? vchip::Learn::violation : vchip::Learn::nothing;
  }
  const bool limited = block.plan(vchip::kNoIndex, source) == vchip::Learn::limit;
  return limited ? vchip::Learn::limit : vchip::Learn::move;
}

// What a frame with this source does, and why it does nothing.
int32_t learn(vchip::L2Block &block, const vchip::Source &source) {
  const int32_t index = block.table().find(source.vid, source.mac);
  const vchip::Learn learn = plan(block, index, source);
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
