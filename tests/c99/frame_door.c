/* SPDX-License-Identifier: MIT */
/*
 * The virtual chip's door for frames, as a C program sees it: every function of
 * frame.h, and where the members of its records lie. Drivers in other languages
 * go by these offsets, on machines of either byte order and of 32 and 64 bits.
 */
#include <swctl-vchip/ability.h>
#include <swctl-vchip/frame.h>

#include <stddef.h>
#include <string.h>

#include "every_function.h"

#define HOLDS(name, condition) typedef char name[(condition) ? 1 : -1]

/* A pointer in front, 32-bit words after it, the time at its own alignment. */
#define PINNED(record, member, offset) \
  HOLDS(record##_##member##_lies, offsetof(struct record, member) == (offset))

PINNED(vchip_frame_t, bytes, 0);
PINNED(vchip_frame_t, room, sizeof(void *));
PINNED(vchip_frame_t, length, sizeof(void *) + 4);
PINNED(vchip_frame_t, port_in, sizeof(void *) + 8);
PINNED(vchip_frame_t, reason, sizeof(void *) + 12);
PINNED(vchip_frame_t, time, 24);
HOLDS(vchip_frame_t_is, sizeof(struct vchip_frame_t) == 32);

PINNED(vchip_arrival_t, bytes, 0);
PINNED(vchip_arrival_t, length, sizeof(void *));
PINNED(vchip_arrival_t, port, sizeof(void *) + 4);
HOLDS(vchip_arrival_t_is, sizeof(struct vchip_arrival_t) == sizeof(void *) + 8);

PINNED(vchip_drops_t, received, 0);
PINNED(vchip_drops_t, forwarded, 8);
PINNED(vchip_drops_t, taken, 16);
PINNED(vchip_drops_t, attack, 24);
PINNED(vchip_drops_t, ingress_rate, 32);
PINNED(vchip_drops_t, vlan, 40);
PINNED(vchip_drops_t, filter, 48);
PINNED(vchip_drops_t, trap, 56);
PINNED(vchip_drops_t, state, 64);
PINNED(vchip_drops_t, learn, 72);
PINNED(vchip_drops_t, rule, 80);
PINNED(vchip_drops_t, lookup, 88);
PINNED(vchip_drops_t, storm, 96);
PINNED(vchip_drops_t, egress, 104);
PINNED(vchip_drops_t, port, 112);
PINNED(vchip_drops_t, length, 120);
PINNED(vchip_drops_t, queue, 128);
PINNED(vchip_drops_t, loop, 136);
PINNED(vchip_drops_t, held, 144);
HOLDS(vchip_drops_t_is, sizeof(struct vchip_drops_t) == 152);

/* As CALL(), without the marks of a build that measures the library. */
#define DOOR_FOR(expected, function, arguments) \
  expect_result(#function, (long long)(function arguments), expected)
#define DOOR(function, arguments) DOOR_FOR(0, function, arguments)

enum { here = 4, there = 5, shortest_sent = 60 };

/* Broadcast from 02:00:00:00:00:01, with a type of no protocol. */
static const uint8_t broadcast[VCHIP_FRAME_MIN] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 2,
                                                   0,    0,    0,    0,    1,    0x88, 0xB5};
/* LLDP from the same. */
static const uint8_t lldp[VCHIP_FRAME_MIN] = {1, 0x80, 0xC2, 0, 0, 0x0E, 2,
                                              0, 0,    0,    0, 1, 0x88, 0xCC};

static void plug(void) {
  const vchip_partner_t partner = {1, VCHIP_ABILITY_USUAL};
  DOOR(vchip_reset, ());
  DOOR(vchip_cable_plug, (unit, here, &partner));
  DOOR(vchip_cable_plug, (unit, there, &partner));
}

static void one_frame(void) {
  uint8_t bytes[shortest_sent];
  vchip_frame_t frame = {bytes, 1, 0, -1, 99, 99};
  DOOR(vchip_clock_advance, (7));
  DOOR_FOR(7, vchip_clock, ());
  DOOR(vchip_frame_arrive, (unit, here, broadcast, sizeof broadcast));
  DOOR_FOR(VCHIP_E_VALUE, vchip_frame_leave, (unit, there, &frame));
  expect_true("too little room says how much it takes", frame.length == shortest_sent);
  frame.room = sizeof bytes;
  DOOR_FOR(1, vchip_frame_leave, (unit, there, &frame));
  expect_true("the frame is what was sent", memcmp(bytes, broadcast, sizeof broadcast) == 0 &&
                                                frame.port_in == here && frame.reason == 0 &&
                                                frame.time == 7);
  DOOR_FOR(0, vchip_frame_leave, (unit, there, &frame));
}

static void many_frames(void) {
  uint8_t bytes[2][shortest_sent];
  vchip_frame_t frames[2] = {{bytes[0], shortest_sent, 0, -1, 0, 0},
                             {bytes[1], shortest_sent, 0, -1, 0, 0}};
  const vchip_arrival_t arrivals[2] = {{broadcast, sizeof broadcast, here},
                                       {lldp, sizeof lldp, there}};
  DOOR(vchip_frames_arrive, (unit, arrivals, 2));
  DOOR_FOR(1, vchip_frames_leave, (unit, there, frames, 2));
  DOOR(vchip_frames_arrive_lent, (unit, arrivals, 1));
  vchip_frames_keep(unit);
  DOOR_FOR(1, vchip_frames_leave, (unit, there, frames, 2));
  expect_true("a flooded frame is at the processor too",
              (vchip_frames_ready(unit) >> VCHIP_CPU_PORT & 1) == 1);
  DOOR(vchip_frame_transmit, (unit, here, lldp, sizeof lldp));
  DOOR_FOR(1, vchip_frames_leave, (unit, here, frames, 2));
  expect_true("the processor sent it",
              frames[0].port_in == VCHIP_CPU_PORT && memcmp(bytes[0], lldp, sizeof lldp) == 0);
  expect_true("nothing waits", vchip_clock_next() == UINT64_MAX);
}

static void accounts(void) {
  struct vchip_drops_t drops;
  memset(&drops, 0xFF, sizeof drops);
  DOOR(vchip_drops_get, (unit, here, &drops));
  expect_true("three came in and left", drops.received == 3 && drops.forwarded == 3);
  DOOR(vchip_drops_clear, (unit, here));
  DOOR(vchip_drops_get, (unit, here, &drops));
  expect_true("nothing is left in the account", drops.received == 0 && drops.held == 0);
  expect_true("reasons have names",
              strcmp(vchip_to_cpu_name(VCHIP_TO_CPU_BPDU), "bpdu") == 0 &&
                  strcmp(vchip_to_cpu_name(VCHIP_TO_CPU_LOOKUP_MISS), "lookup-miss") == 0);
  expect_true("a forwarded frame has none", vchip_to_cpu_name(VCHIP_TO_CPU_FORWARDED) == 0);
}

void call_frame_door(void) {
  plug();
  one_frame();
  many_frames();
  accounts();
}
