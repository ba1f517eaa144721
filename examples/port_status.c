/* SPDX-License-Identifier: MIT */
/*
 * A management program in small: programs the port defaults, forces one port
 * to 100 Mbit/s full duplex and prints what every front port does.
 *
 *     cc port_status.c $(pkg-config --cflags --libs swctl swctl-vchip)
 */
#include <swctl/platform/adapter.h>
#include <swctl/swctl.h>

#include <stdio.h>
#include <stdlib.h>

static void show(int interface) {
  int32_t port = adp_intf_2_phy_id(interface);
  uint32_t link = 0, speed = 0, duplex = 0;
  if (user_port_link_status_get(0, 0, port, &link) < 0 ||
      user_port_speed_get(0, 0, port, &speed) < 0 ||
      user_port_duplex_get(0, 0, port, &duplex) < 0) {
    fprintf(stderr, "interface %d cannot be read\n", interface);
    exit(EXIT_FAILURE);
  }
  if (link == 1)
    printf("interface %2d  up    %4u Mbit/s  %s duplex\n", interface, (unsigned)speed,
           duplex == USER_DUPLEX_FULL ? "full" : "half");
  else
    printf("interface %2d  down\n", interface);
}

int main(int argc, char **argv) {
  int forced = argc > 1 ? atoi(argv[1]) : 0;
  user_port_init(0, 0);
  if (forced != 0 &&
      user_port_speed_set(0, 0, adp_intf_2_phy_id(forced), USER_SPEED_100, USER_DUPLEX_FULL) < 0) {
    fprintf(stderr, "interface %d cannot be forced\n", forced);
    return EXIT_FAILURE;
  }
  for (int interface = 1; interface <= USER_FRONT_INTERFACES; ++interface) show(interface);
  return EXIT_SUCCESS;
}
