// SPDX-License-Identifier: MIT
// The SDK's calls on the VLAN table and the default VLANs.
#include <swctl/platform/sdk.h>
#include <swctl/platform/vlan_read.h>

#include <initializer_list>

#include "chip/chip.h"
#include "common/check.h"
#include "common/table.h"

using vchip::change;
using vchip::flag;
using vchip::look;
using vchip::not_null;
using vchip::on_port;
using vchip::on_vlan;
using vchip::Unit;

namespace {

constexpr int32_t on_ports(const uint32_t *mask) {
  return mask == nullptr || (*mask & ~vchip::kAllPorts) == 0 ? 0 : VCHIP_E_PORT;
}

// The same as change() for a VLAN that has to be there.
template <typename Step>
int32_t change_vlan(uint32_t unit, uint32_t vid, std::initializer_list<int32_t> checks, Step step) {
  return vchip::change_if(unit, checks, [=](Unit &chip) {
    if (!chip.vlan.exists(vid)) return VCHIP_E_VLAN;
    step(chip.vlan);
    return 0;
  });
}

}  // namespace

int32_t rtk_vlan_create(uint32_t unit, uint32_t vid) {
  return vchip::change_if(unit, {on_vlan(vid)}, [=](Unit &chip) {
    if (chip.vlan.exists(vid)) return VCHIP_VLAN_EXISTS;
    chip.vlan.create(vid);
    return 0;
  });
}

int32_t rtk_vlan_destroy(uint32_t unit, uint32_t vid) {
  return change_vlan(unit, vid, {on_vlan(vid)},
                     [=](vchip::VlanBlock &table) { table.destroy(vid); });
}

int32_t rtk_vlan_destroyAll(uint32_t unit, uint32_t restore_default) {
  return change(unit, {flag(restore_default)},
                [=](Unit &chip) { chip.vlan.destroy_all(restore_default != 0); });
}

int32_t rtk_vlan_port_add(uint32_t unit, uint32_t vid, int32_t port, uint32_t untagged) {
  return change_vlan(unit, vid, {on_port(port), on_vlan(vid), flag(untagged)},
                     [=](vchip::VlanBlock &table) { table.add_port(vid, port, untagged != 0); });
}

int32_t rtk_vlan_port_del(uint32_t unit, uint32_t vid, int32_t port) {
  return change_vlan(unit, vid, {on_port(port), on_vlan(vid)},
                     [=](vchip::VlanBlock &table) { table.remove_port(vid, port); });
}

int32_t rtk_vlan_port_get(uint32_t unit, uint32_t vid, uint32_t *member, uint32_t *untagged) {
  return look(unit, {not_null(member, untagged), on_vlan(vid)}, [=](const Unit &chip) {
    const vchip::Vlan &vlan = chip.vlan.vlan(vid);
    if (vlan.exists == 0) return VCHIP_E_VLAN;
    *member = vlan.member;
    *untagged = vlan.untagged;
    return 0;
  });
}

int32_t rtk_vlan_port_set(uint32_t unit, uint32_t vid, const uint32_t *member,
                          const uint32_t *untagged) {
  return change_vlan(
      unit, vid, {not_null(member, untagged), on_ports(member), on_ports(untagged), on_vlan(vid)},
      [=](vchip::VlanBlock &table) { table.set_ports(vid, *member, *untagged); });
}

int32_t rtk_vlan_portPvid_get(uint32_t unit, int32_t port, uint32_t *pvid) {
  return look(unit, {on_port(port), not_null(pvid)}, [=](const Unit &chip) {
    *pvid = chip.vlan.pvid(port);
    return 0;
  });
}

int32_t rtk_vlan_portPvid_set(uint32_t unit, int32_t port, uint32_t pvid) {
  return change(unit, {on_port(port), on_vlan(pvid)},
                [=](Unit &chip) { chip.vlan.set_pvid(port, pvid); });
}

int32_t swctl_platform_vlan_next(uint32_t unit, int32_t from, swctl_platform_vlan *vlan) {
  return look(unit, {not_null(vlan), vchip::search_from(from)}, [=](const Unit &chip) {
    *vlan = {};
    vlan->index = vchip::first_used(from, vchip::kVlanIds,
                                    [&](uint32_t vid) { return chip.vlan.exists(vid); });
    if (vlan->index >= 0) vlan->instance = chip.vlan.vlan(static_cast<uint32_t>(vlan->index)).stg;
    return 0;
  });
}
