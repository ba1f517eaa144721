// SPDX-License-Identifier: MIT
#include "forward/flood_block.h"

#include "common/numbers.h"

namespace vchip {

void FloodBlock::reset() {
  for (uint32_t &mask : isolation_) mask = kAllPorts;
  miss_index_.fill(0);
}

}  // namespace vchip
