// SPDX-License-Identifier: MIT
#include "forward/mask_block.h"

#include <algorithm>

#include "common/numbers.h"
#include "common/sound.h"

namespace vchip {

void MaskBlock::power_on() {
  for (uint32_t index = 0; index < kFloodMasks; ++index) masks_[index].ports = kAllPorts;
}

bool MaskBlock::sound() const {
  return std::ranges::all_of(masks_, [](const ForwardMask &mask) { return is_ports(mask.ports); });
}

}  // namespace vchip
