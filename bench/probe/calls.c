/* SPDX-License-Identifier: MIT */
/*
 * Makes calls of an SDK that does nothing, again and again, and prints the least
 * time of one in nanoseconds of the processor: a line for each kind of call.
 * What the probe adds is the difference to a run without it.
 */
#define _POSIX_C_SOURCE 200809L

#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include <stdio.h>
#include <time.h>

enum { kRounds = 60, kCalls = 1000 };

static double now(void) {
  struct timespec time;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return (double)time.tv_sec * 1e9 + (double)time.tv_nsec;
}

static void read_link(void) {
  uint32_t link = 0;
  rtk_port_link_get(0, 5, &link);
}

static void read_mode(void) {
  uint32_t speed = 0, duplex = 0;
  rtk_port_speedDuplex_get(0, 5, &speed, &duplex);
}

static void add_address(void) {
  chip_l2_ucast_entry entry = {10, {2, 0, 0, 0, 0, 1}, {0, 0}, 5, 0, 0, 0, 0, {0, 0, 0, 0}, 0};
  rtk_l2_addr_add(0, &entry);
}

static void read_loopback(void) {
  uint32_t enable = 0;
  user_port_loopback_get(0, 0, 5, &enable);
}

static double least(void (*call)(void)) {
  double best = 0;
  int round, i;
  for (round = 0; round < kRounds; ++round) {
    const double start = now();
    double time;
    for (i = 0; i < kCalls; ++i) call();
    time = (now() - start) / kCalls;
    if (round == 0 || time < best) best = time;
  }
  return best;
}

int main(void) {
  printf("rtk_port_link_get %.1f\n", least(read_link));
  printf("rtk_port_speedDuplex_get %.1f\n", least(read_mode));
  printf("rtk_l2_addr_add %.1f\n", least(add_address));
  printf("user_port_loopback_get %.1f\n", least(read_loopback));
  return 0;
}
