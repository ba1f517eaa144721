// SPDX-License-Identifier: MIT
#include <swctl-vchip/counter_view.h>

#include "chip/viewing.h"

namespace vchip {

std::vector<uint64_t> counters(uint32_t unit, int32_t port) {
  Viewing chip;
  const PortCounterBlock &block = chip.unit(unit).counter;
  expect_port(port);
  std::vector<uint64_t> values;
  for (uint32_t counter = 0; counter < CHIP_PORT_COUNTERS; ++counter)
    values.push_back(block.count(port, counter));
  return values;
}

}  // namespace vchip
