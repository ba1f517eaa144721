// SPDX-License-Identifier: MIT
#include <swctl/l2.h>
#include <swctl/platform/sdk.h>

#include "frame/static_mac.h"
#include "l2/entry.h"

namespace {

constexpr int32_t kBeforeFirst = -1;
constexpr uint32_t kStaticToo = 1;

using swctl::is_violation;

int32_t next_entry(int32_t *index, chip_l2_ucast_entry &entry) {
  const int32_t result = rtk_l2_nextValidAddr_get(0, index, kStaticToo, &entry);
  // Marking is rare, and a write to every entry would be felt.
  if (result == 0 && is_violation(entry)) [[unlikely]]
    entry.flags |= L2_FLAG_VIOLATION;
  return result;
}

bool is_stale(const chip_l2_ucast_entry &entry) {
  uint32_t members = 0;
  uint32_t untagged = 0;
  return rtk_vlan_port_get(0, entry.vid, &members, &untagged) < 0;
}

// Out of line, so that a walk carries the log's text buffers only while it
// logs.
[[gnu::noinline]] void purge(const char *function, int line, const chip_l2_ucast_entry &entry) {
  rtk_l2_addr_del(0, entry.vid, entry.mac);
  if (STATIC_ENTRY_TEST(entry.flags))
    swctl::note_static_mac(swctl::StaticMac::removed, function, line, entry.mac);
}

}  // namespace

int32_t rtk_l2_traverse(uint32_t unit, user_l2_walk_callback_t callback, void *data) {
  int32_t index = kBeforeFirst;
  chip_l2_ucast_entry entry = {};
  while (next_entry(&index, entry) == 0) {
    if (is_stale(entry)) {
      purge("rtk_l2_traverse", __LINE__, entry);
    } else if (callback(unit, &entry, data) < 0) {
      break;
    }
  }
  return 0;
}

int32_t user_l2_voice_vlan_traverse(user_l2_walk_callback_t callback, void *data) {
  return rtk_l2_traverse(0, callback, data);
}

int32_t rtk_l2_mcast_traverse(uint32_t unit, user_l2_mcast_walk_callback_t callback, void *data) {
  int32_t index = kBeforeFirst;
  chip_l2_mcast_entry entry = {};
  while (rtk_l2_nextValidMcastAddr_get(unit, &index, &entry) == 0) callback(unit, &entry, data);
  return 0;
}

int32_t user_netlink_mac_nextValidAddr_get(uint32_t, user_l2_addr_t *out, int32_t *scanIndex) {
  chip_l2_ucast_entry entry = {};
  if (next_entry(scanIndex, entry) != 0) return -1;
  if (is_stale(entry)) {
    purge("user_netlink_mac_nextValidAddr_get", __LINE__, entry);
    return -1;
  }
  swctl::convert(entry, *out);
  return 0;
}

int32_t user_mac_table_traverse(uint32_t, uint32_t value) {
  uint8_t byte = static_cast<uint8_t>(value);
  rtk_l2_traverse(0, test_fun_callback, &byte);
  return 0;
}

int32_t user_is_mcast_addr_exist_vlan_is(uint32_t unit, int32_t *present) {
  if (present == nullptr) return -1;
  int32_t index = kBeforeFirst;
  chip_l2_mcast_entry entry;
  // An entry of VLAN 0 marks the word before the array: the header says so, and
  // the caller may have made room for it.
  while (rtk_l2_nextValidMcastAddr_get(unit, &index, &entry) == 0) present[entry.vid - 1] = 1;
  return 0;
}

int32_t user_is_mcast_addr_exist_by_vlan(uint32_t unit, uint32_t low, uint32_t high) {
  const uint16_t lowest = static_cast<uint16_t>(low);
  const uint16_t highest = static_cast<uint16_t>(high);
  int32_t index = kBeforeFirst;
  chip_l2_mcast_entry entry = {};
  while (rtk_l2_nextValidMcastAddr_get(unit, &index, &entry) == 0) {
    if (entry.vid >= lowest && entry.vid <= highest) return entry.vid;
  }
  return 0;
}
