// SPDX-License-Identifier: MIT
#include "counter/counter_block.h"
#include "document/findings.h"

namespace vchip {

// Whatever was counted.
void PortCounterBlock::check(Findings &findings) const {
  findings.each("ports", ports_, [&](const chip_port_counters_t &port, size_t) {
    findings.each("value", port.value, [&](const user_counter_t &count, size_t) {
      findings.any("high", count.high);
      findings.any("low", count.low);
    });
  });
}

}  // namespace vchip
