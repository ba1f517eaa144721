/* SPDX-License-Identifier: MIT */
/*
 * The functions that do little or nothing, with arguments that are alive: what
 * they point to and what the library holds must come out as it went in.
 */
#include <string.h>

#include "every_function.h"

enum { words = 64 };

static uint32_t live[words];
static uint32_t copy[words];
static uint8_t scratch[SWCTL_TMP_BUFFER_SIZE];

/* Enough for every argument list of the interface. */
#define LIVE (lead, unit, port, &live[0], &live[8], &live[16], &live[24], &live[32])

static void fill(void) {
  for (uint32_t index = 0; index < words; ++index) live[index] = 0x12345678u + index;
  memcpy(copy, live, sizeof copy);
  for (size_t index = 0; index < sizeof scratch; ++index) g_tmpBuffer[index] = (uint8_t)(index * 7);
  memcpy(scratch, g_tmpBuffer, sizeof scratch);
}

static void expect_nothing_changed(const char *whose) {
  expect_true(whose, memcmp(live, copy, sizeof live) == 0);
  expect_true(whose, memcmp(scratch, g_tmpBuffer, sizeof scratch) == 0);
}

static void mcast_results(void) {
  CALL(user_igmp_snooping_init, LIVE);
  CALL(user_igmp_snooping_enable_set, LIVE);
  CALL(user_igmp_snooping_enable_get, LIVE);
  CALL(User_mcast_init, LIVE);
  CALL(User_switch_port_control_l2mc_enable, LIVE);
  CALL(User_switch_port_control_l2mc_get, LIVE);
  CALL(User_switch_port_control_ipmc_get, LIVE);
  CALL(User_switch_port_control_ipmc_set, LIVE);
  CALL(User_mcast_join, LIVE);
  CALL(User_mcast_leave, LIVE);
  CALL(User_mcast_bitmap_max_get, LIVE);
  CALL(User_mcast_bitmap_set, LIVE);
  CALL(User_mcast_bitmap_get, LIVE);
  CALL(User_mcast_bitmap_del, LIVE);
  CALL(User_mcast_addr_add_w_l2mcindex, LIVE);
  CALL_FOR(-1, User_ip6_mcast_set, LIVE);
  expect_nothing_changed("Multicast and snooping: fixed results write nothing");
}

static void port_results(void) {
  CALL(user_port_master_get, LIVE);
  CALL(user_port_master_set, LIVE);
  CALL(user_port_stp_get, LIVE);
  CALL(user_port_stp_set, LIVE);
  CALL(user_port_bpdu_enable_get, LIVE);
  CALL(user_port_bpdu_enable_set, LIVE);
  CALL(user_port_brcast_set, LIVE);
  CALL(user_port_brcast_get, LIVE);
  CALL(user_port_mucast_set, LIVE);
  CALL(user_port_mucast_get, LIVE);
  CALL(user_port_uicast_set, LIVE);
  CALL(user_port_uicast_get, LIVE);
  CALL(user_port_vlan_member_get, LIVE);
  CALL(user_port_vlan_member_set, LIVE);
  CALL(user_port_ifilter_get, LIVE);
  CALL(user_port_flood_block_set, LIVE);
  CALL(user_port_flood_block_get, LIVE);
  CALL(user_port_inner_tpid_set, LIVE);
  CALL(user_port_inner_tpid_get, LIVE);
  CALL(user_port_phy_get, LIVE);
  CALL(user_port_phy_set, LIVE);
  expect_nothing_changed("Ports: fixed results write nothing");
}

static void qos_results(void) {
  CALL(user_rx_cos_rate_set, LIVE);
  CALL(user_rx_cos_rate_get, LIVE);
  CALL(user_port_dscp_map_get, LIVE);
  CALL(user_cosq_config_get, LIVE);
  CALL(user_cosq_config_set, LIVE);
  CALL(user_cosq_sched_get, LIVE);
  CALL(user_cosq_port_sched_get, LIVE);
  CALL(user_cosq_sched_set, LIVE);
  CALL(user_cosq_port_sched_set, LIVE);
  CALL(user_cosq_mapping_get, LIVE);
  CALL(user_cosq_mapping_set, LIVE);
  CALL(user_cosq_port_mapping_set, LIVE);
  CALL(user_cosq_port_mapping_get, LIVE);
  CALL(user_port_dscp_map_mode_get, LIVE);
  CALL(user_port_dscp_map_mode_set, LIVE);
  CALL(user_port_dscp_map_set, LIVE);
  CALL(user_port_untagged_priority_get, LIVE);
  CALL(user_port_untagged_priority_set, LIVE);
  CALL(user_port_priority_color_set, LIVE);
  expect_nothing_changed("Quality of service: fixed results write nothing");
}

static void vlan_results(void) {
  CALL(user_vlan_mcast_flood_set, LIVE);
  CALL(user_vlan_mcast_flood_get, LIVE);
  CALL(user_vlan_control_set, LIVE);
  CALL(user_vlan_control_get, LIVE);
  CALL(user_vlan_control_port_set, LIVE);
  CALL(user_vlan_control_port_get, LIVE);
  CALL(user_vlan_gport_add, LIVE);
  CALL(user_vlan_gport_delete, LIVE);
  CALL(user_vlan_gport_delete_all, LIVE);
  CALL(user_vlan_gport_get, LIVE);
  CALL(user_vlan_gport_get_all, LIVE);
  CALL(user_vlan_mac_delete_all, LIVE);
  CALL(user_vlan_ip4_delete_all, LIVE);
  CALL(user_port_protocol_vlan_delete_all, LIVE);
  CALL_FOR(-1, user_vlan_translate_delete_all, LIVE);
  CALL_FOR(-1, user_vlan_translate_get, LIVE);
  CALL_FOR(-1, user_vlan_translate_egress_delete_all, LIVE);
  CALL_FOR(-1, user_vlan_translate_egress_get, LIVE);
  CALL_FOR(-1, user_vlan_dtag_delete_all, LIVE);
  CALL_FOR(-1, user_vlan_dtag_get, LIVE);
  expect_nothing_changed("VLANs: fixed results write nothing");
}

static void field_results(void) {
  CALL(user_field_group_set, LIVE);
  CALL(user_field_group_get, LIVE);
  CALL(user_field_group_create_id, LIVE);
  CALL(user_field_entry_create_id, LIVE);
  CALL(user_field_entry_prio_set, LIVE);
  CALL(user_field_qualify_Drop, LIVE);
  CALL(user_field_meter_create, LIVE);
  CALL(user_field_meter_destroy, LIVE);
  CALL(user_field_meter_set, LIVE);
  CALL(user_field_action_ports_add, LIVE);
  CALL(user_field_action_mac_add, LIVE);
  CALL(user_field_action_remove_all, LIVE);
  CALL(user_field_qualify_clear, LIVE);
  CALL(user_field_group_destroy, LIVE);
  CALL(user_field_stat_create_id, LIVE);
  CALL(user_field_stat_destroy, LIVE);
  CALL(user_field_entry_stat_attach, LIVE);
  CALL(user_field_entry_stat_detach, LIVE);
  expect_nothing_changed("Field processor: fixed results write nothing");
}

static void stp_results(void) {
  CALL(user_stg_clear, LIVE);
  CALL(user_stg_default_get, LIVE);
  CALL(user_stg_default_set, LIVE);
  CALL(user_stg_vlan_remove_all, LIVE);
  CALL(user_stg_create, LIVE);
  CALL(user_stg_max_support_count_get, LIVE);
  CALL(user_stg_vlan_count_get, LIVE);
  CALL(user_stg_each_time_list, LIVE);
  CALL(user_stg_vlan_list_destroy, LIVE);
  CALL(user_stg_list_destroy, LIVE);
  CALL(user_l2_bpdu_count, LIVE);
  CALL(user_l2_bpdu_through_set, LIVE);
  CALL(user_l2_bpdu_through_get, LIVE);
  expect_nothing_changed("Spanning tree and protocol frames: fixed results write nothing");
}

static void mirror_trunk_results(void) {
  CALL(user_mirror_init, LIVE);
  CALL(user_mirror_mode_set, LIVE);
  CALL(user_mirror_mode_get, LIVE);
  CALL(user_mirror_port_get, LIVE);
  CALL(user_trunk_init, LIVE);
  CALL(user_trunk_create_id, LIVE);
  CALL(user_trunk_port_get, LIVE);
  CALL(user_trunk_port_add, LIVE);
  CALL(user_trunk_port_delete, LIVE);
  CALL(user_trunk_send_data_to_kernel, LIVE);
  expect_nothing_changed("Mirroring and trunks: fixed results write nothing");
}

static void l2_results(void) {
  CALL(user_mac_table_clear, LIVE);
  CALL(user_mac_addr_replace, LIVE);
  CALL(user_mac_addr_init, LIVE);
  CALL(user_l2_cache_size_get, LIVE);
  expect_nothing_changed("Address table: fixed results write nothing");
}

static void frame_board_results(void) {
  CALL(user_switch_control_set, LIVE);
  CALL(user_switch_control_get, LIVE);
  CALL(user_switch_control_port_set, LIVE);
  CALL(user_switch_control_port_get, LIVE);
  CALL(user_API_poe_led_set_en, LIVE);
  CALL(user_API_poe_led_set, LIVE);
  CALL(user_attach, LIVE);
  CALL(user_bcm_info_get, LIVE);
  CALL(user_API_test, LIVE);
  CALL(user_led_ctrl, LIVE);
  CALL(user_i2c_open, LIVE);
  CALL(user_pci_read, LIVE);
  CALL(user_pci_write, LIVE);
  CALL_FOR(-1, user_system_init, LIVE);
  expect_nothing_changed("Switch controls, attachment and board: fixed results write nothing");
}

static void lines(void) {
  CALL(user_attach_check, LIVE);
  CALL(user_attach_max, (lead, &live[0]));
  CALL(user_device_attach, LIVE);
  CALL(user_device_detach, LIVE);
  CALL(user_auth_init, LIVE);
  CALL(user_auth_mode_set, LIVE);
  CALL(user_auth_mode_get, (lead, unit, port, &live[0]));
  expect_nothing_changed("functions that print write nothing");
}

static void fixed_calls(void) {
  CALL(user_switch_action_init, (unit));
  CALL(user_ulf_flood_index_init, (unit));
  CALL(user_qos_default_cos_src_init, (unit));
  CALL(user_field_meter_ifg_exclude_init, (unit));
}

static void i2c(void) {
  uint8_t bytes[SWCTL_TMP_BUFFER_SIZE] = {0};
  CALL(user_i2c_ioctl, (lead, 0, 0, USER_I2C_READ + 1, bytes, sizeof bytes));
  expect_true("another command copies nothing", bytes[1] == 0);
  CALL(user_i2c_ioctl, (lead, 0, 0, USER_I2C_READ, bytes, sizeof bytes));
  expect_true("reading copies the scratch buffer", memcmp(bytes, scratch, sizeof bytes) == 0);
  expect_nothing_changed("reading leaves the rest alone");
  memset(g_tmpBuffer, 0, sizeof scratch);
}

void call_frame(void) {
  fill();
  mcast_results();
  port_results();
  qos_results();
  vlan_results();
  field_results();
  stp_results();
  mirror_trunk_results();
  l2_results();
  frame_board_results();
  lines();
  fixed_calls();
  i2c();
}
