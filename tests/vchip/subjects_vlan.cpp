// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>

#include "subjects.h"

namespace vchip_test {

const Subjects &vlan_subjects() {
  static const uint32_t ports = 1;
  static const chip_vlan_egress_entry entry = {1, 0, 10, 1, 0, 0, 0, 0, 5, 0, 0, 20, 0, 0};
  static const Subjects all = {
      {"rtk_vlan_create", false, 0, 0, [](auto u, auto, auto &) { return rtk_vlan_create(u, 10); }},
      {"rtk_vlan_destroy", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_vlan_destroy(u, 1); }},
      {"rtk_vlan_destroyAll", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_vlan_destroyAll(u, 0); }},
      {"rtk_vlan_port_add", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_vlan_port_add(u, 1, p, 0); }},
      {"rtk_vlan_port_del", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_vlan_port_del(u, 1, p); }},
      {"rtk_vlan_port_get", false, 0, 2,
       [](auto u, auto, auto &o) { return rtk_vlan_port_get(u, 1, o.at(0), o.at(1)); }},
      {"rtk_vlan_port_set", false, 0, 2,
       [](auto u, auto, auto &o) {
         return rtk_vlan_port_set(u, 1, o.null == 0 ? nullptr : &ports,
                                  o.null == 1 ? nullptr : &ports);
       }},
      {"rtk_vlan_portPvid_get", true, 0, 1,
       [](auto u, auto p, auto &o) { return rtk_vlan_portPvid_get(u, p, o.at(0)); }},
      {"rtk_vlan_portPvid_set", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_vlan_portPvid_set(u, p, 10); }},
      {"rtk_vlan_egrVlanCnvtEntry_set", false, 0, 1,
       [](auto u, auto, auto &o) {
         return rtk_vlan_egrVlanCnvtEntry_set(u, 3, o.null == 0 ? nullptr : &entry);
       }},
      {"rtk_vlan_igrVlanCnvtBlkMode_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_vlan_igrVlanCnvtBlkMode_set(u, 0, 1); }},
  };
  return all;
}

}  // namespace vchip_test
