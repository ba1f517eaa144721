// SPDX-License-Identifier: MIT
#include "forward/mask_block.h"

#include <vector>

#include "core/board.h"
#include "core/dump.h"

namespace vchip {

void MaskBlock::reset() {
  for (uint32_t index = 0; index < kForwardMasks; ++index)
    masks_[index] = {index < kFloodMasks ? kAllPorts : 0, 0};
}

// Only places with a port, since most are empty.
void MaskBlock::dump(const char *name, Dump &unit) const {
  std::vector<uint32_t> used;
  for (uint32_t index = 0; index < kForwardMasks; ++index)
    if (masks_[index].ports != 0) used.push_back(index);
  unit.objects(name, used.size(), [&](Dump &entry, size_t place) {
    entry.number("index", used[place]);
    entry.ports("ports", masks_[used[place]].ports);
  });
}

}  // namespace vchip
