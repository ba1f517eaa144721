/* SPDX-License-Identifier: MIT */
#ifndef SWCTL_TESTS_NARROW_CALLERS_H
#define SWCTL_TESTS_NARROW_CALLERS_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** An argument of narrow.def, and a call with any word in its place. */
struct narrow_argument {
  const char *function;
  const char *parameter;
  uint32_t bits;
  uint32_t base;
  int every_bit; /* each of the low bits changes something at the base */
  int32_t (*call)(uint32_t word);
};

/** The last one has no function. */
extern const struct narrow_argument narrow_arguments[];

/* What the calls are made with, and where they write. */
extern uint8_t output[128];
extern const uint8_t static_mac[SWCTL_MAC_BYTES];
extern const uint8_t dynamic_mac[SWCTL_MAC_BYTES];
extern const uint8_t group_mac[SWCTL_MAC_BYTES];

SWCTL_END_DECLS

#endif
