// SPDX-License-Identifier: MIT
#include <swctl-vchip/forward_view.h>

#include "chip/viewing.h"

namespace vchip {

ForwardView forwarding(uint32_t unit, int32_t port) {
  Viewing chip;
  const Unit &subject = chip.unit(unit);
  expect_port(port);
  const NewAddress &pair = subject.learning.port(port);
  return {subject.flood.isolation(port), pair.mode, number_of(pair.action)};
}

std::vector<uint32_t> forward_masks(uint32_t unit) {
  Viewing chip;
  const MaskBlock &table = chip.unit(unit).forward_mask;
  std::vector<uint32_t> masks;
  for (uint32_t index = 0; index < kPortMasks; ++index) masks.push_back(table.mask(index).ports);
  return masks;
}

}  // namespace vchip
