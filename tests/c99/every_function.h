/* SPDX-License-Identifier: MIT */
/*
 * A plain C99 program that calls every exported function of the library once,
 * with arguments that the virtual chip accepts, and says what surprised it.
 * Each family has a file and a function here.
 */
#ifndef SWCTL_TESTS_EVERY_FUNCTION_H
#define SWCTL_TESTS_EVERY_FUNCTION_H

#include <swctl/swctl.h>

/* Counts one call and says so if it did not answer what it should. */
void expect_result(const char *name, long long result, long long expected);
/* Says so if something else is not as it should be. */
void expect_true(const char *what, int is_true);

/* A build of this program that measures puts its own marks around the calls. */
#ifndef AROUND_CALL
#define AROUND_CALL(name, call) (call)
#endif

#define CALL_FOR(expected, function, arguments) \
  expect_result(#function, AROUND_CALL(#function, function arguments), expected)
#define CALL(function, arguments) CALL_FOR(0, function, arguments)

enum { lead = 1, unit = 1, port = 24 };

void call_field(void);
void call_frame(void);
void call_frame_door(void);
void call_kmsg(void);
void call_l2(void);
void call_mcast(void);
void call_port(void);
void call_vlan(void);
void call_mcast_ip(void);
void call_mirror_trunk(void);
void call_qos(void);
void call_stp(void);

#endif
