// SPDX-License-Identifier: MIT
// The rules that the adapter keeps, by their kinds.
#ifndef SWCTL_SHELL_CHIP_VLAN_RULES_H
#define SWCTL_SHELL_CHIP_VLAN_RULES_H

#include <swctl/platform/vlan_read.h>

#include <array>
#include <cstdint>
#include <string>

#include "chip/call.h"
#include "chip/optional_call.h"

namespace swsh {

// A kind of rule, and what its VLANs are called.
struct RuleKind {
  const char *word;
  const char *help;
  uint32_t entity;
  int32_t first;  // index of the adapter that is 0 here
  int32_t count;
  const char *received_vlan;
  const char *vlan;
  Call<int32_t(uint32_t lead, uint32_t unit, int32_t index)> remove;
};
extern const std::array<RuleKind, 6> kRuleKinds;
const RuleKind &rule_kind(const std::string &word);

inline constexpr auto kNextRule = SWSH_OPTIONAL_CALL(swctl_platform_entity_rule_next);

inline constexpr auto kNextTranslation = SWSH_OPTIONAL_CALL(swctl_platform_vlan_egress_next);

// "mac rule 3"
std::string rule_text(const RuleKind &kind, int32_t index);

// Throw a CommandError of wrong usage if the rule or the
// translation is there, or is not there.
// Where the platform cannot tell, they do nothing.
void expect_free(const RuleKind &kind, int32_t index);
void expect_rule(const RuleKind &kind, int32_t index);
void expect_translation(uint32_t unit, int32_t index);

}  // namespace swsh

#endif
