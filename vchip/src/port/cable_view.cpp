// SPDX-License-Identifier: MIT
#include <swctl-vchip/cable_view.h>

#include "chip/viewing.h"

namespace vchip {

CableView cable(uint32_t unit, int32_t port) {
  Viewing chip;
  const CableBlock &block = chip.unit(unit).cable;
  if (on_front_port(port) != 0) throw std::out_of_range("no wires at port " + std::to_string(port));
  CableView view = {{}, block.tested(port)};
  for (uint32_t pair = 0; pair < VCHIP_PAIRS; ++pair) {
    const WirePair &wires = block.pair(port, pair);
    view.pairs.push_back({wires.faults, wires.length});
  }
  return view;
}

}  // namespace vchip
