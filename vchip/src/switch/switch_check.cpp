// SPDX-License-Identifier: MIT
#include "common/numbers.h"
#include "document/findings.h"
#include "switch/attack_block.h"
#include "switch/defaults_block.h"
#include "switch/switch_block.h"

namespace vchip {

void SwitchBlock::check(Findings &findings) const {
  findings.flag("tag_counts", tag_counts_);
  findings.each("max_length", max_length_, [&](const uint32_t &length, size_t) {
    findings.in("", length, kMinFrameLength, kMaxFrameLength);
  });
  findings.each_at_most("cpu_format", cpu_format_, kMaxCpuFormat);
}

void AttackBlock::check(Findings &findings) const {
  findings.bits("protected_ports", protected_ports_, kAllPorts & ~kCpuPortBit);
  findings.each_at_most("actions", actions_, kMaxAttackAction);
}

void DefaultsBlock::check(Findings &findings) const {
  findings.flag("zero_source_learned", zero_source_learned_);
  findings.at_most("priority_source", priority_source_, kMaxPrioritySource);
  findings.flag("meters_count_gap", meters_count_gap_);
}

}  // namespace vchip
