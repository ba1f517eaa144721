// SPDX-License-Identifier: MIT
#include "document/findings.h"
#include "stp/stp_block.h"
#include "stp/trap_block.h"

namespace vchip {

void StpBlock::check(Findings &findings) const {
  findings.each("instances", instances_, [&](const StpInstance &instance, size_t number) {
    findings.in("exists", instance.exists, number == kCommonInstance ? 1 : 0, 1);
    findings.each_at_most("states", instance.states, kStpForwarding);
  });
}

void TrapBlock::check(Findings &findings) const {
  findings.each_at_most("actions", actions_, kLastFrameAction);
  findings.each("ports", port_actions_, [&](const Actions &actions, size_t) {
    findings.each_at_most("actions", actions, kLastFrameAction);
  });
  findings.each_at_most("rma_groups", rma_groups_, kLastFrameAction);
  findings.each_at_most("bypass", bypass_, 1);
}

}  // namespace vchip
