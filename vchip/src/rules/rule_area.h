// SPDX-License-Identifier: MIT
// What a rule matches and does, as it lies in the adapter's own area of a
// caller's record and in the adapter's table.
#ifndef VCHIP_RULES_RULE_AREA_H
#define VCHIP_RULES_RULE_AREA_H

#include <swctl/platform/adapter_records.h>

#include <cstdint>

namespace vchip {

inline constexpr uint32_t kActionKinds = 4;
inline constexpr uint32_t kQualifierKinds = 7;
inline constexpr uint32_t kMaxQualifierBytes = 32;

struct RuleAction {
  uint32_t kind;
  uint32_t value;
};

struct RuleQualifier {
  uint32_t kind;
  uint32_t length;
  uint32_t masked;
  uint8_t value[kMaxQualifierBytes];
  uint8_t mask[kMaxQualifierBytes];
};

// No rule has two of a kind, so this holds any.
struct RuleArea {
  uint32_t actions;
  uint32_t qualifiers;
  RuleAction action[kActionKinds];
  RuleQualifier qualifier[kQualifierKinds];
};
static_assert(sizeof(RuleArea) <= ADP_FP_RULE_AREA);

}  // namespace vchip

#endif
