/* SPDX-License-Identifier: MIT */
/*
 * A plain C99 program that calls every exported function of the library once,
 * with arguments that the virtual chip accepts, and says what surprised it.
 */
#include <swctl/swctl.h>

#include <stdio.h>

static int calls;
static int surprises;

static void expect(const char *name, int32_t result, int32_t expected) {
  ++calls;
  if (result == expected) return;
  ++surprises;
  printf("%s answered %ld, not %ld\n", name, (long)result, (long)expected);
}

#define CALL(function, arguments) expect(#function, function arguments, 0)

enum { lead = 1, unit = 1, port = 24 };

static void ports(void) {
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

static void fixed_results(void) {
  uint32_t word = 0x12345678;
  CALL(user_port_master_get, (lead, unit, port, &word));
  CALL(user_port_master_set, (lead, unit, port, 1));
  CALL(user_port_stp_get, (lead, unit, port, &word));
  CALL(user_port_stp_set, (lead, unit, port, 1));
  CALL(user_port_bpdu_enable_get, (lead, unit, port, &word));
  CALL(user_port_bpdu_enable_set, (lead, unit, port, 1));
  if (word != 0x12345678) {
    ++surprises;
    printf("a fixed-result getter wrote through its pointer\n");
  }
}

int main(void) {
  ONU_ERR_CODE = 0;
  stateflag = 0;
  g_tmpBuffer[SWCTL_TMP_BUFFER_SIZE - 1] = 0;
  sntp_cfg[SWCTL_SNTP_CFG_SIZE - 1] = 0;
  ports();
  fixed_results();
  printf("%d functions called, %d surprises\n", calls, surprises);
  return surprises == 0 ? 0 : 1;
}
