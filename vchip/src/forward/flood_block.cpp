// SPDX-License-Identifier: MIT
#include "forward/flood_block.h"

#include "common/numbers.h"
#include "common/sound.h"

namespace vchip {

void FloodBlock::power_on() {
  for (uint32_t &mask : isolation_) mask = kAllPorts;
}

bool FloodBlock::sound() const {
  return are_ports(isolation_) && are_at_most(miss_index_, kFloodMasks - 1);
}

}  // namespace vchip
