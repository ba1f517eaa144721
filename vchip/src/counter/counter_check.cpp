// SPDX-License-Identifier: MIT
#include "counter/counter_block.h"
#include "document/findings.h"

namespace vchip {

// Whatever was counted.
void PortCounterBlock::check(Findings &findings) const {
  findings.any(ports_);
}

}  // namespace vchip
