// SPDX-License-Identifier: MIT
#include "forward/mask_block.h"

#include "common/numbers.h"

namespace vchip {

void MaskBlock::reset() {
  for (uint32_t index = 0; index < kPortMasks; ++index)
    masks_[index] = {index < kFloodMasks ? kAllPorts : 0, 0};
}

}  // namespace vchip
