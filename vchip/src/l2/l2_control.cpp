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

int32_t vchip_station_learn(uint32_t unit, int32_t port, const vchip_station_t *station) {
  const vchip_station_t from = station == nullptr ? vchip_station_t{} : *station;
  return change_if(
      unit,
      {on_port(port), not_null(station), on_vlan_id(from.vid), on_station(from.mac),
       is_trunk_or_none(from.trunk)},
      [&](vchip::Unit &chip) { return chip.l2.learn(from.vid, from.mac, port, from.trunk); });
}

int32_t vchip_l2_mark(uint32_t unit, uint32_t vid, const uint8_t *mac, uint32_t state,
                      uint32_t aux) {
  return change_if(unit, {not_null(mac), on_vlan_id(vid), on_station(mac)},
                   [=](vchip::Unit &chip) { return chip.l2.mark(vid, mac, state, aux); });
}

int32_t vchip_time_pass(uint32_t unit, uint32_t seconds) {
  return change(unit, {}, [=](vchip::Unit &chip) { chip.l2.pass(seconds); });
}
