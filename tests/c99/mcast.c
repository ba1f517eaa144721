/* SPDX-License-Identifier: MIT */
#include "every_function.h"

static const uint8_t group[SWCTL_MAC_BYTES] = {1, 0, 0x5e, 0, 0, 1};

static void layer_2_groups(void) {
  User_mcast_addr_t record;
  CALL(User_mcast_addr_t_init, (lead, &record, group, 10));
  record.pbmp.word[0] = 6;
  CALL(User_mcast_addr_add, (lead, unit, &record));
  record.pbmp.word[0] = 12;
  CALL(User_mcast_port_add, (lead, unit, &record));
  CALL(User_mcast_port_remove, (lead, unit, &record));
  record.pbmp.word[0] = 0;
  CALL(User_mcast_port_get, (lead, unit, group, 10, &record));
  expect_true("the group has the ports of the last record", record.pbmp.word[0] == 12);
  CALL(User_mcast_addr_remove, (lead, unit, group, 10));
}

void call_mcast(void) {
  layer_2_groups();
}
