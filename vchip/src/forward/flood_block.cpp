// SPDX-License-Identifier: MIT
#include "forward/flood_block.h"

#include "common/numbers.h"
#include "common/sound.h"

namespace vchip {

void FloodBlock::reset() {
  for (uint32_t &mask : isolation_) mask = kAllPorts;
  miss_index_.fill(0);
}

bool FloodBlock::sound() const {
  return are_ports(isolation_) && are_at_most(miss_index_, kFloodMasks - 1);
}

}  // namespace vchip
