// SPDX-License-Identifier: MIT
// Deletes that walk the table: the entry points, their callbacks, and the
// table of what each callback removes.
#include <swctl/l2.h>

#include <cstring>

#include "l2/remove.h"

namespace {

using swctl::fits;
using swctl::Keys;
using swctl::Kind;
using swctl::Removal;
using swctl::remove;
using swctl::Rule;
using swctl::Vlan;
using Entry = chip_l2_ucast_entry;

// What a callback's data points to, as a record to hold entries against.
Entry match_record(const void *data) {
  Entry match;
  memcpy(&match, data, sizeof match);
  return match;
}
Entry match_port(const void *data) {
  Entry match = {};
  memcpy(&match.port, data, sizeof match.port);
  return match;
}
Entry match_trunk(const void *data) {
  Entry match = {};
  memcpy(&match.trunk, data, sizeof match.trunk);
  return match;
}
Entry match_vlan(const void *data) {
  uint16_t vid;
  memcpy(&vid, data, sizeof vid);
  Entry match = {};
  match.vid = vid;
  return match;
}

// The copy keeps the entry whole while it is deleted: the walk's own may be
// overwritten by whoever stands behind the calls.
int32_t remove_fitting(const Rule &rule, const Entry &walked, const Entry &match) {
  const Entry entry = walked;
  if (fits(rule.keys, entry, match)) remove(rule, entry);
  return 0;
}

constexpr Keys kMacPortVlan = {.vlan = Vlan::equal_unless_0, .port = true, .mac = true};

constexpr Removal kStatic = {Kind::static_only, false, true};
constexpr Removal kStaticOnInterface = {Kind::static_only, true, true};
constexpr Removal kDynamic = {Kind::dynamic_only, false, false};
constexpr Removal kAll = {Kind::all, false, true};
constexpr Removal kAllOnInterfaceUnlogged = {Kind::all, true, false};

}  // namespace

#define CALLBACK(name, match, keys, removal)                        \
  int32_t name(uint32_t, chip_l2_ucast_entry *entry, void *data) {  \
    static constexpr Rule kRule = {#name, __LINE__, keys, removal}; \
    return remove_fitting(kRule, *entry, match(data));              \
  }

CALLBACK(del_static_mac_by_mac_port_callback, match_record, kMacPortVlan, kStatic)
CALLBACK(del_static_trunk_mac_by_mac_port_vid_callback, match_record, kMacPortVlan, kStatic)
CALLBACK(del_dynamic_trunk_mac_by_mac_port_vid_callback, match_record, kMacPortVlan, kDynamic)
CALLBACK(del_all_trunk_mac_by_mac_port_vid_callback, match_record, kMacPortVlan, kAll)
CALLBACK(del_dynaic_mac_by_mac_port_callback, match_record, kMacPortVlan, kDynamic)
CALLBACK(del_all_mac_by_mac_port_callback, match_record, (Keys{.port = true, .mac = true}), kAll)
CALLBACK(del_static_mac_by_port_callback, match_port, Keys{.port = true}, kStatic)
CALLBACK(del_static_mac_by_trunk_callback, match_trunk, Keys{.trunk = true}, kStaticOnInterface)
CALLBACK(del_static_mac_by_vlan_callback, match_vlan, Keys{.vlan = Vlan::equal_16_bits},
         kStaticOnInterface)
CALLBACK(del_static_mac_by_vlan_port_callback, match_record,
         (Keys{.vlan = Vlan::equal, .port = true}), kStatic)
CALLBACK(del_static_mac_by_vlan_trunk_callback, match_record,
         (Keys{.vlan = Vlan::equal, .trunk = true}), kStatic)
CALLBACK(del_static_mac_by_mac_callback, match_record, Keys{.mac = true}, kStatic)

int32_t del_all__mac_bytype_callback(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  static_assert(USER_LEARN_TYPE_DYNAMIC == 0 && USER_LEARN_TYPE_STATIC == 1 &&
                USER_LEARN_TYPE_ALL == 2);
  static constexpr Removal kByType[] = {kDynamic, kStaticOnInterface, kAllOnInterfaceUnlogged};
  uint32_t type;
  memcpy(&type, data, sizeof type);
  if (type > USER_LEARN_TYPE_ALL) type = USER_LEARN_TYPE_ALL;
  const Rule rule = {"del_all__mac_bytype_callback", __LINE__, Keys{}, kByType[type]};
  return remove_fitting(rule, *entry, Entry{});
}

namespace {

// What an entry point was given to match by.
struct Given {
  const uint8_t *mac = nullptr;
  uint32_t vid = 0;
  int32_t port = 0;
  int32_t trunk = 0;
};

// Only the six bytes of the address are the caller's; a whole record copied
// from there would read past its end.
Entry record_of(const Given &given) {
  Entry match = {};
  match.vid = given.vid;
  match.port = given.port;
  match.trunk = given.trunk;
  if (given.mac != nullptr) memcpy(match.mac, given.mac, sizeof match.mac);
  return match;
}

template <typename Match>
int32_t walk(uint32_t unit, user_l2_walk_callback_t callback, Match match) {
  return rtk_l2_traverse(unit, callback, &match);
}

}  // namespace

#define BY_MAC_PORT_VLAN(name, callback)                                                  \
  int32_t name(uint32_t, uint32_t unit, const uint8_t *mac, int32_t port, uint32_t vid) { \
    return walk(unit, callback, record_of({.mac = mac, .vid = vid, .port = port}));       \
  }

BY_MAC_PORT_VLAN(user_l2_addr_delete_static_by_mac_port, del_static_mac_by_mac_port_callback)
BY_MAC_PORT_VLAN(user_l2_addr_delete_trunk_static_by_port_mac_vlan,
                 del_static_trunk_mac_by_mac_port_vid_callback)
BY_MAC_PORT_VLAN(user_l2_addr_delete_trunk_dynamic_by_port_mac_vlan,
                 del_dynamic_trunk_mac_by_mac_port_vid_callback)
BY_MAC_PORT_VLAN(user_l2_addr_delete_all_dynamic_by_port_mac_vlan,
                 del_all_trunk_mac_by_mac_port_vid_callback)
BY_MAC_PORT_VLAN(user_l2_addr_delete_dynaic_by_mac_port, del_dynaic_mac_by_mac_port_callback)

int32_t user_l2_addr_delete_all_by_mac_port(uint32_t, uint32_t unit, const uint8_t *mac,
                                            int32_t port) {
  return walk(unit, del_all_mac_by_mac_port_callback, record_of({.mac = mac, .port = port}));
}

int32_t user_l2_addr_delete_static_by_port(uint32_t, uint32_t unit, uint32_t, int32_t port) {
  return walk(unit, del_static_mac_by_port_callback, port);
}

int32_t user_l2_addr_delete_static_by_trunk(uint32_t, uint32_t unit, int32_t trunk) {
  return walk(unit, del_static_mac_by_trunk_callback, trunk);
}

int32_t user_l2_addr_delete_static_by_vlan(uint32_t, uint32_t unit, uint32_t vid) {
  return walk(unit, del_static_mac_by_vlan_callback, static_cast<uint16_t>(vid));
}

int32_t user_l2_addr_delete_static_by_vlan_port(uint32_t, uint32_t unit, uint32_t vid,
                                                int32_t port) {
  return walk(unit, del_static_mac_by_vlan_port_callback, record_of({.vid = vid, .port = port}));
}

int32_t user_l2_addr_delete_static_by_vlan_trunk(uint32_t, uint32_t unit, uint32_t vid,
                                                 int32_t trunk) {
  return walk(unit, del_static_mac_by_vlan_trunk_callback, record_of({.vid = vid, .trunk = trunk}));
}

int32_t user_l2_addr_delete_static_by_mac(uint32_t, uint32_t unit, const uint8_t *mac) {
  return walk(unit, del_static_mac_by_mac_callback, record_of({.mac = mac}));
}

int32_t user_l2_addr_del_all_addr_by_lrntype(uint32_t, uint32_t unit, uint32_t type) {
  return walk(unit, del_all__mac_bytype_callback, type);
}
