// SPDX-License-Identifier: MIT
#include "rules/rule_block.h"

#include <algorithm>
#include <atomic>

namespace vchip {

bool RuleBlock::sound() const {
  return std::ranges::all_of(
      rules_, [](const Rule &rule) { return rule.exists == 0 || is_whole(rule.area); });
}

void RuleBlock::add(uint32_t place, const RuleArea &area) {
  rules_[place].area = area;
  std::atomic_ref<uint32_t>(rules_[place].exists).store(1, std::memory_order_release);
}

void RuleBlock::remove(uint32_t place) {
  std::atomic_ref<uint32_t>(rules_[place].exists).exchange(0);
}

namespace {

uint32_t width_of(Reading reading) {
  switch (reading) {
    case Reading::mac: return 1;
    case Reading::half:
    case Reading::ethertype: return sizeof(uint16_t);
    case Reading::ip4:
    case Reading::ports:
    case Reading::word: break;
  }
  return sizeof(uint32_t);
}

void turn(RuleQualifier &qualifier) {
  const QualifierKind *kind = qualifier_kind(qualifier.kind);
  if (kind == nullptr) return;
  const uint32_t width = width_of(kind->reading);
  for (uint32_t at = 0; at + width <= SWCTL_PLATFORM_RULE_BYTES; at += width) {
    std::reverse(qualifier.value + at, qualifier.value + at + width);
    std::reverse(qualifier.mask + at, qualifier.mask + at + width);
  }
}

}  // namespace

void RuleBlock::turn_values() {
  for (Rule &rule : rules_)
    for (RuleQualifier &qualifier : rule.area.qualifier) turn(qualifier);
}

void RuleBlock::each_rule(
    const std::function<void(const EntityKind &, uint32_t, const RuleArea &)> &visit) const {
  for (const EntityKind &kind : kEntityKinds)
    for (uint32_t index = 0; index < kind.limit; ++index)
      if (has(kind.first + index)) visit(kind, index, rules_[kind.first + index].area);
}

}  // namespace vchip
