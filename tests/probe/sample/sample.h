// SPDX-License-Identifier: MIT
// The records and prototypes of the sample list, in place of an SDK's header.
#ifndef SWCTL_TESTS_PROBE_SAMPLE_H
#define SWCTL_TESTS_PROBE_SAMPLE_H

#include <swctl/types.h>

struct sample_entry {
  uint16_t vid;
  uint8_t mac[6];
  int32_t port;
  struct {
    uint32_t flags;
  } inner;
};

struct sample_address {
  uint8_t byte[16];
};

struct sample_block {
  uint32_t index;
  uint8_t data[6260];
  int32_t last;
};

static_assert(sizeof(sample_block) == 6268);

extern "C" {
// The order of these lines has a meaning.
// clang-format off
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) SWCTL_API int32_t name(SWCTL_PARAMETERS(__VA_ARGS__));
#include "sample/sample.def"
#include <swctl/platform/calls_end.h>
// clang-format on
}

#endif
