// SPDX-License-Identifier: MIT
#include "document/findings.h"
#include "forward/flood_block.h"
#include "forward/learning_block.h"
#include "forward/mask_block.h"

namespace vchip {

void FloodBlock::check(Findings &findings) const {
  findings.each("isolation", isolation_,
                [&](const uint32_t &mask, size_t) { findings.ports("", mask); });
  findings.each_at_most("miss_index", miss_index_, kFloodMasks - 1);
}

// Only the masks for flooding can be written.
void MaskBlock::check(Findings &findings) const {
  findings.each("masks", masks_, [&](const ForwardMask &mask, size_t index) {
    findings.bits("ports", mask.ports, index < kFloodMasks ? kAllPorts : 0);
    findings.zero("extra", mask.extra);
  });
}

void LearningBlock::check(Findings &findings) const {
  findings.each("ports", ports_, [&](const NewAddress &port, size_t) {
    findings.at_most("mode", port.mode, kLearnNothing);
    findings.at_most("action", port.action, kLastFrameAction);
  });
}

}  // namespace vchip
