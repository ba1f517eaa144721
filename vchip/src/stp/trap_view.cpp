// SPDX-License-Identifier: MIT
#include <swctl-vchip/stp_view.h>

#include "chip/viewing.h"

namespace vchip {

TrapView traps(uint32_t unit) {
  Viewing chip;
  const TrapBlock &block = chip.unit(unit).trap;
  return {numbers_of(block.actions()),
          numbers_of(block.rma_groups()),
          {block.bypass().begin(), block.bypass().end()}};
}

std::vector<uint32_t> port_traps(uint32_t unit, int32_t port) {
  Viewing chip;
  const TrapBlock &block = chip.unit(unit).trap;
  expect_port(port);
  return numbers_of(block.port_actions(port));
}

}  // namespace vchip
