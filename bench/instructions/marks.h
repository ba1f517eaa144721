/* SPDX-License-Identifier: MIT */
/*
 * Marks around each call of the program that calls every function: under
 * callgrind the instructions of each call are dumped under the function's name.
 */
#ifndef SWCTL_BENCH_INSTRUCTIONS_MARKS_H
#define SWCTL_BENCH_INSTRUCTIONS_MARKS_H

#include <valgrind/callgrind.h>

static inline void begin_marked_call(void) {
  CALLGRIND_ZERO_STATS;
}

static inline long long end_marked_call(const char *name, long long result) {
  CALLGRIND_DUMP_STATS_AT(name);
  return result;
}

#define AROUND_CALL(name, call) (begin_marked_call(), end_marked_call(name, (call)))

#endif
