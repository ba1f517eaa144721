/* SPDX-License-Identifier: MIT */
#include <swctl/platform/port_records.h>

#include <unistd.h>

#include "every_function.h"

/* The cable test waits; this program does not. */
unsigned sleep(unsigned seconds) {
  expect_true("the cable test waits three seconds", seconds == 3);
  return 0;
}

static void link_and_mode(void) {
  uint32_t word = 0;
  CALL(user_port_init, (lead, unit));
  CALL(user_port_media_type_get, (lead, unit, port, &word));
  CALL(user_port_link_medium_get, (lead, unit, port, &word));
  CALL(user_fiberport_link_status_get, (lead, unit, port, &word));
  CALL(user_port_link_status_get, (lead, unit, port, &word));
  CALL(user_port_loopback_set, (lead, unit, port, 1));
  CALL(user_port_loopback_get, (lead, unit, port, &word));
  CALL(user_port_speed_max, (lead, unit, port, &word));
  CALL(user_port_speed_get, (lead, unit, port, &word));
  CALL(user_port_duplex_get, (lead, unit, port, &word));
  CALL(user_port_speed_set, (lead, unit, port, USER_SPEED_100, USER_DUPLEX_FULL));
  CALL(user_port_duplex_set, (lead, unit, port, USER_DUPLEX_HALF, 1));
}

static void negotiation(void) {
  uint32_t word = 0;
  CALL(user_port_enable_set, (lead, unit, port, 1));
  CALL(user_port_enable_get, (lead, unit, port, &word));
  CALL(user_port_backpressure_set, (lead, unit, port, 1));
  CALL(user_port_autoneg_set, (lead, unit, port, 1));
  CALL(user_port_autoneg_get, (lead, unit, port, &word));
  CALL(user_port_mdix_set, (lead, unit, port, USER_MDIX_CROSSED));
  CALL(user_port_mdix_get, (lead, unit, port, &word));
  CALL(user_port_ability_advert_get, (lead, unit, port, &word));
  CALL(user_port_ability_advert_set, (lead, unit, port, &word));
  CALL(user_port_pause_set, (lead, unit, port, 1));
  CALL(user_port_pause_get, (lead, unit, port, &word));
  CALL(user_port_pause_get_stat, (lead, unit, port, &word));
}

static void rates(void) {
  int32_t rate = 0;
  uint32_t word = 0;
  uint32_t enable = 0;
  uint8_t mode = 0;
  CALL(user_port_egress_rate_set, (lead, unit, port, 1600));
  CALL(user_port_egress_rate_get, (lead, unit, port, &rate));
  expect_true("the egress rate reads back", rate == 1600);
  CALL(user_port_ingress_rate_set, (lead, unit, port, 1600));
  CALL(user_port_ingress_rate_get, (lead, unit, port, &rate));
  CALL_FOR(-1, user_rate_stormControlEnable_set, (lead, unit, port, 2, 1));
  CALL(user_rate_stormsel_set, (lead, unit, port, 2, 1));
  CALL(user_rate_stormsel_get, (lead, unit, port, 2, &word));
  CALL(user_rate_stormExceedFlag_get, (lead, unit, port, &enable, &word));
  CALL(user_rate_stormExceedFlag_reset, (lead, unit, port));
  CALL(user_rate_bandwidth_set, (lead, unit, port, 2, 100));
  CALL(user_rate_bandwidth_get, (lead, unit, port, 2, &word, &enable));
  CALL(user_rate_stormCountMode_set, (lead, unit, 1));
  CALL(user_rate_stormCountMode_get, (lead, unit, &mode));
  expect_true("the count mode reads back", mode == 1);
}

static void forwarding(void) {
  user_pbmp_t ports = {{0x6, 0, 0, 0, 0, 0, 0, 0}};
  uint32_t word = 0;
  uint16_t vid = 0;
  CALL(user_port_egress_set, (lead, unit, port, 0, ports));
  CALL(user_port_egress_get, (lead, unit, port, 0, &ports));
  CALL(user_ulf_flood_ports_set, (lead, unit, ports));
  CALL(user_ulf_flood_ports_get, (lead, unit, &ports));
  expect_true("bitmaps travel by value", ports.word[0] == 0x6);
  CALL(user_ulf_flood_port_add_remove, (lead, unit, port, 1));
  CALL(user_port_ifilter_set, (lead, unit, port, 1));
  CALL(user_port_untagged_vlan_set, (lead, unit, port, 10));
  CALL(user_port_untagged_vlan_get, (lead, unit, port, &vid));
  expect_true("the default VLAN reads back", vid == 10);
  CALL(user_port_jumboframe_set, (lead, unit, port, 9000));
  CALL(user_port_jumboframe_get, (lead, unit, port, &word));
  CALL(user_port_learn_set, (lead, unit, port, USER_LEARN_DISCARD));
  CALL(user_port_learn_get, (lead, unit, port, &word));
}

static void measurements(void) {
  user_cable_diag_t cable;
  user_counter_t counter = {1, 1};
  chip_port_counters_t counters;
  CALL(User_port_cablediag, (lead, unit, port, &cable));
  expect_true("a socket without a cable is open", cable.state == USER_CABLE_OPEN);
  CALL(user_port_packetstat_get, (lead, unit, port, CHIP_COUNTER_RX_OCTETS, &counter));
  CALL(user_port_packetstat_clear, (lead, unit, port));
  CALL(user_stat_port_get, (lead, unit, port, USER_STAT_PACKETS, &counter));
  CALL(user_stat_port_getAll, (lead, unit, port, &counters));
}

static void switch_controls(void) {
  uint32_t word = 0;
  CALL(user_dos_attack_prevent_init, (lead, unit));
  CALL(user_dos_attack_prevent_action_set, (lead, unit, 3, 1));
  CALL(user_dos_attack_prevent_action_get, (lead, unit, 3, &word));
  CALL(user_eee_portEnable_set, (lead, unit, port, 1));
  CALL(user_eee_portEnable_get, (lead, unit, port, &word));
  CALL(user_switch_pkt2CpuTypeFormat_set, (lead, unit, 1, 1));
}

static void tags(void) {
  uint32_t word = 0;
  uint16_t tpid = 0;
  CALL(user_port_dtag_mode_set, (lead, unit, port, USER_DTAG_ON));
  CALL(user_port_dtag_mode_get, (lead, unit, port, &word));
  CALL(user_port_tpid_set, (lead, unit, port, 0x9100, 1));
  CALL(user_port_tpid_get, (lead, unit, port, &tpid));
  expect_true("the tag protocol identifier reads back", tpid == 0x9100);
  CALL(user_tpid_entry_set, (lead, unit, 2, 0x88a8));
}

void call_port(void) {
  link_and_mode();
  negotiation();
  rates();
  forwarding();
  measurements();
  switch_controls();
  tags();
}
