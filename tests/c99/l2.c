/* SPDX-License-Identifier: MIT */
#include <stdio.h>
#include <string.h>

#include "every_function.h"

/* The VLAN that the chip has after power-on; entries of others are stale. */
enum { vlan = 1 };

static const uint8_t station[SWCTL_MAC_BYTES] = {2, 0, 0, 0, 0, 1};
static const uint8_t group[SWCTL_MAC_BYTES] = {1, 0, 0x5e, 0, 0, 1};

static user_l2_addr_t record_of(const uint8_t *mac, uint32_t flags) {
  user_l2_addr_t record;
  memset(&record, 0, sizeof record);
  memcpy(record.mac, mac, sizeof record.mac);
  record.vid = vlan;
  record.port = 3;
  record.tgid = 5;
  record.flags = flags;
  record.pbmp.word[0] = 6;
  return record;
}

static int32_t count_entry(uint32_t unit_word, chip_l2_ucast_entry *entry, void *count) {
  expect_true("the walk hands its unit on", unit_word == 7);
  expect_true("the walk hands the entry on", entry->vid == vlan && entry->port == 3);
  ++*(int *)count;
  return 0;
}

static int32_t count_group(uint32_t unit_word, chip_l2_mcast_entry *entry, void *count) {
  expect_true("the walk hands its unit on", unit_word == 0);
  expect_true("the walk hands the group on", entry->vid == vlan && entry->portmask == 6);
  ++*(int *)count;
  return 0;
}

static void single_entries(void) {
  user_l2_addr_t out;
  int32_t index = -1;
  int count = 0;
  CALL(user_mac_addr_add, (lead, record_of(station, 0)));
  CALL(user_mac_addr_get, (lead, station, vlan, &out));
  expect_true("the entry is read back", out.port == 3 && out.tgid == 5);
  CALL(rtk_l2_traverse, (7, count_entry, &count));
  expect_true("the walk calls back once", count == 1);
  CALL(user_netlink_mac_nextValidAddr_get, (lead, &out, &index));
  expect_true("the step reads the entry", out.vid == vlan && out.mac[5] == 1);
  CALL(user_mac_table_traverse, (lead, 1));
  CALL(user_mac_addr_delete, (lead, station, vlan));
}

static void groups(void) {
  int32_t present[vlan] = {0};
  user_l2_addr_t out;
  uint32_t index = 0;
  int count = 0;
  CALL(user_mac_mcast_addr_add, (lead, record_of(group, 0)));
  CALL(user_mac_mcast_addr_get, (lead, group, vlan, &out));
  expect_true("the ports are read back", out.pbmp.word[0] == 6);
  CALL(user_mac_mcast_get_fwd_index, (group, vlan, &index));
  expect_true("the group has a forwarding index", index == 1);
  CALL(rtk_l2_mcast_traverse, (0, count_group, &count));
  expect_true("the walk calls back once", count == 1);
  CALL(user_is_mcast_addr_exist_vlan_is, (0, present));
  expect_true("the group's VLAN is marked", present[vlan - 1] == 1);
  CALL_FOR(vlan, user_is_mcast_addr_exist_by_vlan, (0, 1, 4094));
  CALL(user_mac_mcast_addr_delete, (lead, group, vlan));
  CALL(user_mac_mcast_add_with_portmask, (group, vlan, out.pbmp));
}

static void flushes(void) {
  CALL(user_l2_addr_delete_by_mac_port, (lead, unit, station, 0, 3, 0));
  CALL(user_l2_addr_delete_by_port, (lead, unit, 0, 3, 0));
  CALL(user_l2_addr_delete_by_trunk, (lead, unit, 5, 0));
  CALL(user_l2_addr_delete_by_vlan, (lead, unit, vlan, 0));
  CALL(user_l2_addr_delete_by_vlan_port, (lead, unit, vlan, 0, 3, 0));
  CALL(user_l2_addr_delete_by_vlan_trunk, (lead, unit, vlan, 5, 0));
  CALL(user_l2_addr_delete_by_mac, (lead, unit, station, 0));
}

static void walk_deletes(void) {
  CALL(user_l2_addr_delete_static_by_mac_port, (lead, unit, station, 3, vlan));
  CALL(user_l2_addr_delete_trunk_static_by_port_mac_vlan, (lead, unit, station, 3, vlan));
  CALL(user_l2_addr_delete_trunk_dynamic_by_port_mac_vlan, (lead, unit, station, 3, vlan));
  CALL(user_l2_addr_delete_all_dynamic_by_port_mac_vlan, (lead, unit, station, 3, vlan));
  CALL(user_l2_addr_delete_dynaic_by_mac_port, (lead, unit, station, 3, vlan));
  CALL(user_l2_addr_delete_all_by_mac_port, (lead, unit, station, 3));
  CALL(user_l2_addr_delete_static_by_port, (lead, unit, 0, 3));
  CALL(user_l2_addr_delete_static_by_trunk, (lead, unit, 5));
  CALL(user_l2_addr_delete_static_by_vlan, (lead, unit, vlan));
  CALL(user_l2_addr_delete_static_by_vlan_port, (lead, unit, vlan, 3));
  CALL(user_l2_addr_delete_static_by_vlan_trunk, (lead, unit, vlan, 5));
  CALL(user_l2_addr_delete_static_by_mac, (lead, unit, station));
  CALL(user_l2_addr_del_all_addr_by_lrntype, (lead, unit, USER_LEARN_TYPE_ALL));
}

/* On an entry that is not in the chip, so that nothing is lost. */
static void delete_callbacks(void) {
  chip_l2_ucast_entry entry = {0};
  chip_l2_ucast_entry match = {0};
  int32_t number = 3;
  uint16_t vid = vlan;
  uint32_t type = USER_LEARN_TYPE_DYNAMIC;
  CALL(del_static_mac_by_mac_port_callback, (unit, &entry, &match));
  CALL(del_static_trunk_mac_by_mac_port_vid_callback, (unit, &entry, &match));
  CALL(del_dynamic_trunk_mac_by_mac_port_vid_callback, (unit, &entry, &match));
  CALL(del_all_trunk_mac_by_mac_port_vid_callback, (unit, &entry, &match));
  CALL(del_dynaic_mac_by_mac_port_callback, (unit, &entry, &match));
  CALL(del_all_mac_by_mac_port_callback, (unit, &entry, &match));
  CALL(del_static_mac_by_port_callback, (unit, &entry, &number));
  CALL(del_static_mac_by_trunk_callback, (unit, &entry, &number));
  CALL(del_static_mac_by_vlan_callback, (unit, &entry, &vid));
  CALL(del_static_mac_by_vlan_port_callback, (unit, &entry, &match));
  CALL(del_static_mac_by_vlan_trunk_callback, (unit, &entry, &match));
  CALL(del_static_mac_by_mac_callback, (unit, &entry, &match));
  CALL(del_all__mac_bytype_callback, (unit, &entry, &type));
}

static void learning(void) {
  user_l2_learn_limit_t limit = {{0, 0}, 3, {0, 0}, 10};
  uint32_t word = 0;
  CALL(user_mac_age_time_set, (lead, 600));
  CALL(user_mac_age_time_get, (lead, &word));
  expect_true("the aging time is read back", word == 600);
  CALL(user_mac_learn_limit_set, (lead, limit));
  limit.limit = 0;
  CALL(user_mac_learn_limit_get, (lead, &limit));
  expect_true("the limit is read back", limit.limit == 10);
  CALL(user_mac_learn_count_get_by_port, (3, &word));
  expect_true("nothing is learned yet", word == 0);
}

/* On a file without a name: the fixed path of the violation functions may not
   be writable, which they answer with 0 as well. */
static void dumps(void) {
  const chip_l2_ucast_entry entry = {0};
  chip_l2_ucast_entry unicast = {0};
  chip_l2_mcast_entry multicast = {0};
  user_l2_addr_t out;
  uint32_t count = 0;
  FILE *file = tmpfile();
  FILE *keep;
  CALL_FOR(1, test_fun3_callback, (unit, &unicast, file));
  CALL_FOR(1, test_fun4_callback, (unit, &multicast, file));
  rewind(file);
  CALL_FOR(1, user_l2_mactable_fread, (&out, file, 0));
  fclose(file);
  CALL(user_mac_table_show, (lead, "/dev/null"));
  CALL(user_mac_mcast_table_show, (lead, "/dev/null"));
  CALL_FOR((int)strlen(" FLAGS=0x00000000\n"), user_bcm_l2_addr_dumptest, (&entry));
  CALL(test_fun_callback, (unit, &unicast, NULL));
  keep = fopen(USER_MACTABLE_PATH, "r");
  CALL(user_mac_violate_count_get_by_port, (3, &count));
  CALL(user_mac_violate_del_by_port, (3));
  if (keep == NULL) {
    remove(USER_MACTABLE_PATH);
  } else {
    fclose(keep);
  }
}

void call_l2(void) {
  single_entries();
  groups();
  flushes();
  walk_deletes();
  delete_callbacks();
  learning();
  dumps();
}
