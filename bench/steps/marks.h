/* SPDX-License-Identifier: MIT */
/*
 * Around each call of the program that calls every function: makes the call
 * again and again, and lets steps.cpp say when it is enough.
 */
#ifndef SWCTL_BENCH_STEPS_MARKS_H
#define SWCTL_BENCH_STEPS_MARKS_H

/* The first calls may find a chip that later ones do not; then one is learnt
   from, or rounds of them are timed. */
enum { steps_warm_up = 3 };

void steps_begin(const char *name);
/* How often the next round makes the call; 0 ends it. */
int steps_round(void);

#ifdef SWCTL_STEPS_ONCE
#define AROUND_CALL(name, call) (call)
#else
#define AROUND_CALL(name, call)                                                  \
  (__extension__({                                                               \
    const long long steps_result = (call);                                       \
    int steps_left;                                                              \
    for (steps_left = 1; steps_left < steps_warm_up; ++steps_left) (void)(call); \
    steps_begin(name);                                                           \
    while ((steps_left = steps_round()) != 0)                                    \
      while (steps_left-- != 0) (void)(call);                                    \
    steps_result;                                                                \
  }))
#endif

#endif
