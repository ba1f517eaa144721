// SPDX-License-Identifier: MIT
#include <swctl-vchip/vchip.h>

#include "commands.h"
#include "usage_error.h"
#include "words.h"

namespace vchipctl {

void count(const CountWords &words) {
  const uint32_t unit = parse_unit(words.unit);
  const uint32_t counter = parse_word(words.counter, "counter", VCHIP_ACL_COUNTERS - 1);
  const uint64_t packets = parse_number(words.packets, "number of packets", UINT64_MAX);
  const uint64_t bytes = parse_number(words.bytes, "number of bytes", UINT64_MAX);
  expect_done(vchip_acl_count(unit, counter, packets, bytes));
}

}  // namespace vchipctl
