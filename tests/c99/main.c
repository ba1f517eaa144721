/* SPDX-License-Identifier: MIT */
#include <stdio.h>

#include "every_function.h"

static int calls;
static int surprises;

void expect_result(const char *name, long long result, long long expected) {
  ++calls;
  if (result == expected) return;
  ++surprises;
  printf("%s answered %lld, not %lld\n", name, result, expected);
}

void expect_true(const char *what, int is_true) {
  if (is_true) return;
  ++surprises;
  printf("not so: %s\n", what);
}

static void touch_globals(void) {
  ONU_ERR_CODE = 0;
  stateflag = 0;
  g_tmpBuffer[SWCTL_TMP_BUFFER_SIZE - 1] = 0;
  sntp_cfg[SWCTL_SNTP_CFG_SIZE - 1] = 0;
}

int main(void) {
  touch_globals();
  call_field();
  call_frame();
  call_kmsg();
  call_l2();
  call_mcast();
  call_mcast_ip();
  call_mirror_trunk();
  call_port();
  call_qos();
  call_stp();
  call_vlan();
  call_frame_door();
  printf("%d functions called, %d surprises\n", calls, surprises);
  return surprises == 0 ? 0 : 1;
}
