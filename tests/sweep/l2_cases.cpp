// SPDX-License-Identifier: MIT
#include <swctl-vchip/vchip.h>
#include <swctl/l2.h>
#include <swctl/platform/sdk.h>
#include <swctl/stp.h>

#include <array>
#include <cstring>

#include "cases.h"
#include "sweep.h"

namespace sweep {
namespace {

using Mac = std::array<uint8_t, SWCTL_MAC_BYTES>;

constexpr uint32_t kLead = 1;
constexpr uint32_t kUnit = 1;
constexpr uint32_t kVlan = 10;
constexpr uint32_t kStale = 30;
constexpr int32_t kPort = 3;
constexpr int32_t kCpuPort = VCHIP_CPU_PORT;
constexpr int32_t kTrunk = 5;
constexpr uint32_t kStatic = 0x08;
constexpr uint32_t kDynamic = 0;

constexpr Mac station(uint8_t number) {
  return {2, 0, 0, 0, 0, number};
}
constexpr Mac kStation = station(1);
constexpr Mac kGroup = {1, 0, 0x5e, 0, 0, 1};

chip_l2_ucast_entry entry_of(uint32_t vid, const Mac &mac, int32_t port, uint32_t flags) {
  chip_l2_ucast_entry entry = {};
  entry.vid = vid;
  memcpy(entry.mac, mac.data(), mac.size());
  entry.port = port;
  entry.trunk = kTrunk;
  entry.flags = flags;
  return entry;
}

void put(uint32_t vid, const Mac &mac, int32_t port, uint32_t flags) {
  const chip_l2_ucast_entry entry = entry_of(vid, mac, port, flags);
  rtk_l2_addr_add(0, &entry);
}

// Of every kind of entry one: static and learned, on a front port and on the
// processor's, in a VLAN that is gone, and marked as a violation.
void fill() {
  start_over();
  rtk_vlan_create(0, kVlan);
  put(kVlan, kStation, kPort, kStatic);
  put(kVlan, station(2), kPort, kDynamic);
  put(kVlan, station(3), kCpuPort, kStatic);
  put(kStale, station(4), kPort, kStatic);
  put(kStale, station(5), kPort, kDynamic);
  put(kVlan, station(6), kPort, kStatic);
  put(kVlan, station(7), kPort, kDynamic);
  for (const Mac &mac : {station(6), station(7)}) vchip_l2_mark(0, kVlan, mac.data(), 1, 0);
}

int32_t go_on(uint32_t, chip_l2_ucast_entry *, void *) {
  return 5;
}
int32_t give_up(uint32_t, chip_l2_ucast_entry *, void *) {
  return -1;
}

void walks() {
  uint32_t count = 0;
  fill();
  SWEEP(rtk_l2_traverse, "gives up", 0, kUnit, give_up, nullptr);
  fill();
  SWEEP(rtk_l2_traverse, "to the end", 0, kUnit, go_on, nullptr);
  fill();
  SWEEP(user_l2_voice_vlan_traverse, "", 0, go_on, nullptr);
  fill();
  SWEEP(user_mac_table_traverse, "", 0, kLead, 7);
  fill();
  SWEEP(user_mac_table_show, "", 0, kLead, "/dev/null");
  fill();
  SWEEP(user_mac_violate_count_get_by_port, "", 0, kPort, &count);
  fill();
  SWEEP(user_mac_violate_del_by_port, "", 0, kPort);
}

void steps() {
  user_l2_addr_t out = {};
  int32_t index = -1;
  for (const uint32_t vid : {kVlan, kStale}) {
    start_over();
    rtk_vlan_create(0, kVlan);
    put(vid, kStation, kPort, kStatic);
    sweep({"user_netlink_mac_nextValidAddr_get", vid == kVlan ? "entry" : "stale",
           vid == kVlan ? 0 : -1, [&] {
             index = -1;
             return user_netlink_mac_nextValidAddr_get(kLead, &out, &index);
           }});
  }
}

#define ON_TABLE(function, ...) \
  fill(), SWEEP(function, "filled table", 0, kLead, kUnit, __VA_ARGS__)

void walk_deletes() {
  const uint8_t *const mac = kStation.data();
  const Mac learned = station(2);
  ON_TABLE(user_l2_addr_delete_static_by_mac_port, mac, kPort, kVlan);
  ON_TABLE(user_l2_addr_delete_trunk_static_by_port_mac_vlan, mac, kPort, kVlan);
  ON_TABLE(user_l2_addr_delete_trunk_dynamic_by_port_mac_vlan, learned.data(), kPort, kVlan);
  ON_TABLE(user_l2_addr_delete_all_dynamic_by_port_mac_vlan, mac, kPort, kVlan);
  ON_TABLE(user_l2_addr_delete_dynaic_by_mac_port, learned.data(), kPort, kVlan);
  ON_TABLE(user_l2_addr_delete_all_by_mac_port, mac, kPort);
  ON_TABLE(user_l2_addr_delete_static_by_port, 0, kPort);
  ON_TABLE(user_l2_addr_delete_static_by_trunk, kTrunk);
  ON_TABLE(user_l2_addr_delete_static_by_vlan, kVlan);
  ON_TABLE(user_l2_addr_delete_static_by_vlan_port, kVlan, kPort);
  ON_TABLE(user_l2_addr_delete_static_by_vlan_trunk, kVlan, kTrunk);
  ON_TABLE(user_l2_addr_delete_static_by_mac, mac);
  for (const uint32_t type : {USER_LEARN_TYPE_DYNAMIC, USER_LEARN_TYPE_STATIC})
    ON_TABLE(user_l2_addr_del_all_addr_by_lrntype, type);
  fill();
  SWEEP(user_l2_addr_del_all_addr_by_lrntype, "all", 0, kLead, kUnit, USER_LEARN_TYPE_ALL);
}

#define ON_ENTRY(callback, entry, match)                    \
  fill(), sweep({#callback, "fits", 0, [&] {                \
                   chip_l2_ucast_entry walked = entry;      \
                   return callback(kUnit, &walked, &match); \
                 }})

void delete_callbacks() {
  const chip_l2_ucast_entry fixed = entry_of(kVlan, kStation, kPort, kStatic);
  const chip_l2_ucast_entry learned = entry_of(kVlan, station(2), kPort, kDynamic);
  chip_l2_ucast_entry match = fixed;
  chip_l2_ucast_entry other = learned;
  int32_t port = kPort;
  int32_t trunk = kTrunk;
  uint16_t vid = kVlan;
  ON_ENTRY(del_static_mac_by_mac_port_callback, fixed, match);
  ON_ENTRY(del_static_trunk_mac_by_mac_port_vid_callback, fixed, match);
  ON_ENTRY(del_dynamic_trunk_mac_by_mac_port_vid_callback, learned, other);
  ON_ENTRY(del_all_trunk_mac_by_mac_port_vid_callback, fixed, match);
  ON_ENTRY(del_dynaic_mac_by_mac_port_callback, learned, other);
  ON_ENTRY(del_all_mac_by_mac_port_callback, fixed, match);
  ON_ENTRY(del_static_mac_by_port_callback, fixed, port);
  ON_ENTRY(del_static_mac_by_trunk_callback, fixed, trunk);
  ON_ENTRY(del_static_mac_by_vlan_callback, fixed, vid);
  ON_ENTRY(del_static_mac_by_vlan_port_callback, fixed, match);
  ON_ENTRY(del_static_mac_by_vlan_trunk_callback, fixed, match);
  ON_ENTRY(del_static_mac_by_mac_callback, fixed, match);
  for (int32_t type : {USER_LEARN_TYPE_STATIC, USER_LEARN_TYPE_ALL})
    ON_ENTRY(del_all__mac_bytype_callback, fixed, type);
}

int32_t see_group(uint32_t, chip_l2_mcast_entry *, void *) {
  return -1;
}

void groups() {
  constexpr uint32_t kVlans = 20;
  int32_t present[kVlans] = {};
  user_l2_addr_t record = {};
  memcpy(record.mac, kGroup.data(), kGroup.size());
  record.vid = kVlan;
  record.pbmp.word[0] = 6;
  start_over();
  SWEEP(user_mac_mcast_addr_add, "new", 0, kLead, record);
  record.pbmp.word[0] = 8;
  SWEEP(user_mac_mcast_addr_add, "more ports", 0, kLead, record);
  record.vid = kVlan + 1;
  user_mac_mcast_addr_add(kLead, record);
  SWEEP(rtk_l2_mcast_traverse, "two groups", 0, 0, see_group, nullptr);
  SWEEP(user_mac_mcast_table_show, "two groups", 0, kLead, "/dev/null");
  SWEEP(user_is_mcast_addr_exist_vlan_is, "two groups", 0, 0, present);
  SWEEP(user_is_mcast_addr_exist_by_vlan, "first", kVlan, 0, kVlan, kVlan);
  SWEEP(user_is_mcast_addr_exist_by_vlan, "last", kVlan + 1, 0, kVlan + 1, kVlan + 1);
  SWEEP(user_is_mcast_addr_exist_by_vlan, "none", 0, 0, 1, 2);
}

void static_entry() {
  user_l2_addr_t record = {};
  memcpy(record.mac, kStation.data(), kStation.size());
  record.vid = kVlan;
  record.port = kPort;
  record.flags = kStatic;
  start_over();
  SWEEP(user_mac_addr_add, "static", 0, kLead, record);
}

}  // namespace

void l2_cases() {
  walks();
  steps();
  walk_deletes();
  delete_callbacks();
  groups();
  static_entry();
}

}  // namespace sweep
