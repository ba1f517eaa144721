// SPDX-License-Identifier: MIT
#include <swctl-vchip/counter_view.h>

#include "core/viewing.h"

namespace vchip {

std::vector<uint64_t> counters(uint32_t unit, int32_t port) {
  Viewing chip;
  const PortCounterBlock &block = chip.unit(unit).counter;
  expect_port(port);
  std::vector<uint64_t> values;
  for (const user_counter_t &each : block.port(port).value)
    values.push_back(uint64_t{each.high} << 32 | each.low);
  return values;
}

}  // namespace vchip
