/* SPDX-License-Identifier: MIT */
#include "every_function.h"

static void mirrors(void) {
  CALL(user_mirror_port_set, (lead, unit, 3, 1, 9, USER_MIRROR_BOTH));
  CALL(user_check_set_mirror_disable, (lead, unit, 1));
  CALL(user_set_flow_mirror, (lead, unit, 1, 9));
  CALL(user_set_mirror_disable, (lead, unit, 1));
}

static void trunks(void) {
  const user_trunk_desc_t members = {3, 0, {1, 2, 3}};
  CALL(user_trunk_set, (lead, unit, 4, members));
  CALL(user_trunk_loadbalance_set, (lead, unit, 4, USER_TRUNK_HASH_MACS));
  CALL(user_trunk_destroy, (lead, unit, 4));
  CALL(user_trunk_trap_lacp, (lead, unit, 1));
  CALL(user_eoam_trap_set, (lead, unit, 1));
}

void call_mirror_trunk(void) {
  mirrors();
  trunks();
}
