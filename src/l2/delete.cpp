// SPDX-License-Identifier: MIT
// Deletes that walk the table: the entry points, their callbacks, and the
// table of what each callback removes.
#include <swctl/l2.h>

#include <cstring>

#include "l2/remove.h"

namespace {

using swctl::DeleteRule;
using swctl::EntryKind;
using swctl::Keys;
using swctl::keys_match;
using swctl::Removal;
using swctl::remove_entry;
using swctl::VlanMatch;
using Entry = chip_l2_ucast_entry;

// What a callback's data points to, as a record to compare entries with.
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

// The copy keeps the entry whole while it is deleted: the SDK may write to the
// walk's own meanwhile.
int32_t remove_matching(const DeleteRule &rule, const Entry &walked, const Entry &match) {
  const Entry entry = walked;
  if (keys_match(rule.keys, entry, match)) remove_entry(rule, entry);
  return 0;
}

// What the callbacks remove. Those with "trunk" and "port" in their names
// compare the port; programs of the generic interface expect them to.
constexpr Removal kStatic = {
    .kind = EntryKind::static_only, .on_interface_only = false, .logged = true};
constexpr Removal kStaticOnInterface = {
    .kind = EntryKind::static_only, .on_interface_only = true, .logged = true};
constexpr Removal kDynamic = {
    .kind = EntryKind::dynamic_only, .on_interface_only = false, .logged = false};
constexpr Removal kAll = {.kind = EntryKind::all, .on_interface_only = false, .logged = true};
constexpr Removal kAllOnInterfaceUnlogged = {
    .kind = EntryKind::all, .on_interface_only = true, .logged = false};

constexpr Keys kMacPortVlan = {.vlan = VlanMatch::equal_unless_0, .port = true, .mac = true};

constexpr DeleteRule kStaticMacByMacPort = {
    .callback = "del_static_mac_by_mac_port_callback",
    .line = __LINE__,
    .keys = kMacPortVlan,
    .removal = kStatic,
};
constexpr DeleteRule kStaticTrunkMacByMacPortVid = {
    .callback = "del_static_trunk_mac_by_mac_port_vid_callback",
    .line = __LINE__,
    .keys = kMacPortVlan,
    .removal = kStatic,
};
constexpr DeleteRule kDynamicTrunkMacByMacPortVid = {
    .callback = "del_dynamic_trunk_mac_by_mac_port_vid_callback",
    .line = __LINE__,
    .keys = kMacPortVlan,
    .removal = kDynamic,
};
constexpr DeleteRule kAllTrunkMacByMacPortVid = {
    .callback = "del_all_trunk_mac_by_mac_port_vid_callback",
    .line = __LINE__,
    .keys = kMacPortVlan,
    .removal = kAll,
};
constexpr DeleteRule kDynaicMacByMacPort = {
    .callback = "del_dynaic_mac_by_mac_port_callback",
    .line = __LINE__,
    .keys = kMacPortVlan,
    .removal = kDynamic,
};
constexpr DeleteRule kAllMacByMacPort = {
    .callback = "del_all_mac_by_mac_port_callback",
    .line = __LINE__,
    .keys = {.port = true, .mac = true},
    .removal = kAll,
};
constexpr DeleteRule kStaticMacByPort = {
    .callback = "del_static_mac_by_port_callback",
    .line = __LINE__,
    .keys = {.port = true},
    .removal = kStatic,
};
constexpr DeleteRule kStaticMacByTrunk = {
    .callback = "del_static_mac_by_trunk_callback",
    .line = __LINE__,
    .keys = {.trunk = true},
    .removal = kStaticOnInterface,
};
constexpr DeleteRule kStaticMacByVlan = {
    .callback = "del_static_mac_by_vlan_callback",
    .line = __LINE__,
    .keys = {.vlan = VlanMatch::equal_16_bits},
    .removal = kStaticOnInterface,
};
constexpr DeleteRule kStaticMacByVlanPort = {
    .callback = "del_static_mac_by_vlan_port_callback",
    .line = __LINE__,
    .keys = {.vlan = VlanMatch::equal, .port = true},
    .removal = kStatic,
};
constexpr DeleteRule kStaticMacByVlanTrunk = {
    .callback = "del_static_mac_by_vlan_trunk_callback",
    .line = __LINE__,
    .keys = {.vlan = VlanMatch::equal, .trunk = true},
    .removal = kStatic,
};
constexpr DeleteRule kStaticMacByMac = {
    .callback = "del_static_mac_by_mac_callback",
    .line = __LINE__,
    .keys = {.mac = true},
    .removal = kStatic,
};

// By learn type.
constexpr DeleteRule by_learn_type(const Removal &removal) {
  return {
      .callback = "del_all__mac_bytype_callback",
      .line = __LINE__,
      .keys = {},
      .removal = removal,
  };
}
static_assert(USER_LEARN_TYPE_DYNAMIC == 0 && USER_LEARN_TYPE_STATIC == 1 &&
              USER_LEARN_TYPE_ALL == 2);
constexpr DeleteRule kByLearnType[] = {
    by_learn_type(kDynamic),
    by_learn_type(kStaticOnInterface),
    by_learn_type(kAllOnInterfaceUnlogged),
};

}  // namespace

int32_t del_static_mac_by_mac_port_callback(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  return remove_matching(kStaticMacByMacPort, *entry, match_record(data));
}

int32_t del_static_trunk_mac_by_mac_port_vid_callback(uint32_t, chip_l2_ucast_entry *entry,
                                                      void *data) {
  return remove_matching(kStaticTrunkMacByMacPortVid, *entry, match_record(data));
}

int32_t del_dynamic_trunk_mac_by_mac_port_vid_callback(uint32_t, chip_l2_ucast_entry *entry,
                                                       void *data) {
  return remove_matching(kDynamicTrunkMacByMacPortVid, *entry, match_record(data));
}

int32_t del_all_trunk_mac_by_mac_port_vid_callback(uint32_t, chip_l2_ucast_entry *entry,
                                                   void *data) {
  return remove_matching(kAllTrunkMacByMacPortVid, *entry, match_record(data));
}

int32_t del_dynaic_mac_by_mac_port_callback(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  return remove_matching(kDynaicMacByMacPort, *entry, match_record(data));
}

int32_t del_all_mac_by_mac_port_callback(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  return remove_matching(kAllMacByMacPort, *entry, match_record(data));
}

int32_t del_static_mac_by_port_callback(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  return remove_matching(kStaticMacByPort, *entry, match_port(data));
}

int32_t del_static_mac_by_trunk_callback(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  return remove_matching(kStaticMacByTrunk, *entry, match_trunk(data));
}

int32_t del_static_mac_by_vlan_callback(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  return remove_matching(kStaticMacByVlan, *entry, match_vlan(data));
}

int32_t del_static_mac_by_vlan_port_callback(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  return remove_matching(kStaticMacByVlanPort, *entry, match_record(data));
}

int32_t del_static_mac_by_vlan_trunk_callback(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  return remove_matching(kStaticMacByVlanTrunk, *entry, match_record(data));
}

int32_t del_static_mac_by_mac_callback(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  return remove_matching(kStaticMacByMac, *entry, match_record(data));
}

int32_t del_all__mac_bytype_callback(uint32_t, chip_l2_ucast_entry *entry, void *data) {
  uint32_t type;
  memcpy(&type, data, sizeof type);
  if (type > USER_LEARN_TYPE_ALL) type = USER_LEARN_TYPE_ALL;
  return remove_matching(kByLearnType[type], *entry, Entry{});
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

int32_t user_l2_addr_delete_static_by_mac_port(uint32_t, uint32_t unit, const uint8_t *mac,
                                               int32_t port, uint32_t vid) {
  return walk(unit, del_static_mac_by_mac_port_callback,
              record_of({.mac = mac, .vid = vid, .port = port}));
}

int32_t user_l2_addr_delete_trunk_static_by_port_mac_vlan(uint32_t, uint32_t unit,
                                                          const uint8_t *mac, int32_t port,
                                                          uint32_t vid) {
  return walk(unit, del_static_trunk_mac_by_mac_port_vid_callback,
              record_of({.mac = mac, .vid = vid, .port = port}));
}

int32_t user_l2_addr_delete_trunk_dynamic_by_port_mac_vlan(uint32_t, uint32_t unit,
                                                           const uint8_t *mac, int32_t port,
                                                           uint32_t vid) {
  return walk(unit, del_dynamic_trunk_mac_by_mac_port_vid_callback,
              record_of({.mac = mac, .vid = vid, .port = port}));
}

int32_t user_l2_addr_delete_all_dynamic_by_port_mac_vlan(uint32_t, uint32_t unit,
                                                         const uint8_t *mac, int32_t port,
                                                         uint32_t vid) {
  return walk(unit, del_all_trunk_mac_by_mac_port_vid_callback,
              record_of({.mac = mac, .vid = vid, .port = port}));
}

int32_t user_l2_addr_delete_dynaic_by_mac_port(uint32_t, uint32_t unit, const uint8_t *mac,
                                               int32_t port, uint32_t vid) {
  return walk(unit, del_dynaic_mac_by_mac_port_callback,
              record_of({.mac = mac, .vid = vid, .port = port}));
}

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
