/* SPDX-License-Identifier: MIT */
#include "every_function.h"

static int seen;

static void groups(void) {
  uint32_t word = 0;
  CALL(user_stg_create_id, (lead, unit, 3));
  CALL(user_stp_isMstpInstanceExist_get, (lead, unit, 3, &word));
  expect_true("group 3 exists", word == 1);
  CALL(user_stg_stg_count_get, (lead, unit, &word));
  CALL(user_stg_vlan_add, (lead, unit, 3, 1));
  CALL(user_stg_vlan_remove, (lead, unit, 3, 1));
  CALL(user_stg_stp_set, (lead, unit, 3, port, USER_STP_LEARNING));
  CALL(user_stg_stp_get, (lead, unit, 3, port, &word));
  expect_true("the port learns", word == USER_STP_LEARNING && stateflag == USER_STP_LEARNING);
  CALL(user_stg_destroy, (lead, unit, 3));
}

static void lists(void) {
  static uint16_t list[USER_STG_LIST_WORDS];
  uint8_t mac[6] = {0};
  CALL(user_stg_vlan_each_time_list, (lead, unit, 3, list));
  CALL(user_stg_vlan_list, (lead, unit, 3, list));
  CALL(user_stg_list, (lead, unit));
  CALL(user_l2_bpdu_set, (lead, unit, 0, mac));
  CALL(user_l2_bpdu_get, (lead, unit, 0, mac));
}

static int32_t see(uint32_t which, chip_l2_ucast_entry *entry, void *data) {
  (void)which;
  (void)entry;
  (void)data;
  return 0;
}

static void traps(void) {
  CALL(user_igmp_trap_to_cpu, (lead, unit, 1));
  CALL(user_mld_trap_to_cpu, (lead, unit, 1));
  CALL(user_selfmac_trap_to_cpu, (lead, unit, 1));
  CALL(user_stg_init, (lead, unit));
  CALL(user_stg_set_bpdu_forward, (lead, unit, 0));
  CALL(user_lldp_init, (lead, unit));
  CALL(user_lldp_set_bpdu_forward, (lead, unit, 0, 25));
  CALL(user_l2_voice_vlan_traverse, (see, &seen));
}

void call_stp(void) {
  groups();
  lists();
  traps();
}
