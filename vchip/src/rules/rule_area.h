// SPDX-License-Identifier: MIT
// What a rule matches and does, as it lies in the adapter's own area of a
// caller's record and in the adapter's table.
#ifndef VCHIP_RULES_RULE_AREA_H
#define VCHIP_RULES_RULE_AREA_H

#include <swctl/platform/vlan_read.h>

#include <cstdint>

namespace vchip {

inline constexpr uint32_t kActionKinds = 4;
inline constexpr uint32_t kQualifierKinds = 7;
static_assert(kActionKinds <= SWCTL_PLATFORM_RULE_ACTIONS);
static_assert(kQualifierKinds <= SWCTL_PLATFORM_RULE_QUALIFIERS);

using RuleAction = swctl_platform_rule_action;
using RuleQualifier = swctl_platform_rule_qualifier;

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
