/* SPDX-License-Identifier: MIT */
#include "every_function.h"

static void priorities(void) {
  const uint8_t queues[USER_QOS_PRIORITIES] = {0, 1, 2, 3, 4, 5, 6, 7};
  uint32_t word = 0;
  CALL(user_qos_pri_remap_set, (unit, 5, 2));
  CALL(user_qos_pri_queue_map_set, (queues));
  CALL(user_qos_pri_queue_map_get, (6, &word));
  expect_true("priority 6 waits in queue 6", word == 6);
  CALL(user_qos_dscp_map_set, (46, 5));
  CALL(user_qos_dscp_map_get, (46, &word));
  expect_true("code point 46 has priority 5", word == 5);
  CALL(user_qos_port_cos_set, (port, 3));
  CALL(user_qos_port_cos_get, (port, &word));
  expect_true("the port's priority is 3", word == 3);
}

static void schedules(void) {
  const uint32_t weights[USER_QOS_QUEUES] = {0, 0, 1, 1, 2, 2, 4, 8};
  uint32_t read[USER_QOS_QUEUES];
  uint32_t mode = 0;
  CALL(user_qos_schedule_set, (USER_QOS_SCHEDULE_WEIGHTED, weights));
  CALL(user_qos_schedule_get, (&mode, read));
  expect_true("the schedule is weighted", mode == USER_QOS_SCHEDULE_WEIGHTED);
  expect_true("queue 7 has weight 8", read[7] == 8);
  CALL(user_qos_cpu_weight_init, ());
}

static void sources(void) {
  CALL(user_qos_remark_inner_tag_src_init, ());
  CALL(user_qos_trust_sel_group_set, (USER_QOS_TRUST_DSCP));
  CALL_FOR(-1, user_qos_trust_sel_group_set, (3));
  CALL(user_qos_trust_sel_group_init, ());
  CALL(user_qos_port_trust_mode_set, (port, USER_QOS_TRUST_DSCP));
}

void call_qos(void) {
  priorities();
  schedules();
  sources();
}
