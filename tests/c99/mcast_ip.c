/* SPDX-License-Identifier: MIT */
#include "every_function.h"

enum { vid = 10 };

static const user_pbmp_t ports = {{3}};

static void entries(void) {
  const uint32_t source = 0xC0000201u;
  const uint32_t group = 0xE8010203u;
  CALL(User_ip_mcast_add, (unit, source, group, vid, ports));
  CALL(User_ip_mcast_set, (unit, source, group, vid, ports));
  CALL(User_ip_mcast_del, (unit, source, group, vid));
}

static void ip6_entries(void) {
  const uint8_t source[SWCTL_IP6_BYTES] = {0x20, 1};
  const uint8_t group[SWCTL_IP6_BYTES] = {0xff, 0x3e};
  CALL(User_ip6_mcast_add, (unit, source, group, vid, ports));
  CALL(User_ip6_mcast_del, (unit, source, group, vid));
}

static void modes(void) {
  CALL(User_switch_ipmc_set, (lead, unit, 1));
  CALL(User_switch_ip6mc_mode_set, (lead, unit, 1));
  CALL(User_switch_ipmc_lookup_miss_action, (lead, unit, port, 2));
  CALL(User_switch_ip6mc_lookup_miss_action, (lead, unit, port, 2));
}

void call_mcast_ip(void) {
  entries();
  ip6_entries();
  modes();
}
