// SPDX-License-Identifier: MIT
#include "port/cable_block.h"

namespace vchip {
namespace {

constexpr uint32_t has(uint32_t faults, uint32_t fault) {
  return (faults & fault) != 0 ? 1 : 0;
}

}  // namespace

void CableBlock::set_pair(int32_t port, uint32_t pair, const WirePair &wires) {
  ports_[port].pairs[pair] = wires;
}

void CableBlock::test(int32_t port, bool plugged) {
  Port &own = ports_[port];
  for (int pair = 0; pair < VCHIP_PAIRS; ++pair)
    own.found[pair] = plugged ? own.pairs[pair] : WirePair{VCHIP_FAULT_OPEN, 0};
  own.tested = 1;
}

chip_cable_test_t CableBlock::result(int32_t port) const {
  chip_cable_test_t result = {};
  for (int pair = 0; pair < VCHIP_PAIRS; ++pair) {
    const WirePair &found = ports_[port].found[pair];
    result.open[pair] = has(found.faults, VCHIP_FAULT_OPEN);
    result.shorted[pair] = has(found.faults, VCHIP_FAULT_SHORT);
    result.mismatch[pair] = has(found.faults, VCHIP_FAULT_MISMATCH);
    result.crosstalk[pair] = has(found.faults, VCHIP_FAULT_CROSSTALK);
    result.length[pair] = found.length;
  }
  return result;
}

}  // namespace vchip
