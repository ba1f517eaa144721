/* SPDX-License-Identifier: MIT */
#include "every_function.h"

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

void call_port(void) {
  link_and_mode();
}
