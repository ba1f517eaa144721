// SPDX-License-Identifier: MIT
#include <swctl-vchip/stp_view.h>

#include "chip/viewing.h"

namespace vchip {

TrapView traps(uint32_t unit) {
  Viewing chip;
  const TrapBlock &block = chip.unit(unit).trap;
  return {{block.actions().begin(), block.actions().end()},
          {block.rma_groups().begin(), block.rma_groups().end()},
          {block.bypass().begin(), block.bypass().end()}};
}

std::vector<uint32_t> port_traps(uint32_t unit, int32_t port) {
  Viewing chip;
  const TrapBlock &block = chip.unit(unit).trap;
  if (on_port(port) != 0) throw std::out_of_range("no port " + std::to_string(port));
  return {block.port_actions(port).begin(), block.port_actions(port).end()};
}

}  // namespace vchip
