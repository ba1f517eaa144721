// SPDX-License-Identifier: MIT
#include "acl/rules.h"

#include <algorithm>

#include "chip/absent.h"
#include "chip/optional_call.h"

namespace swsh {
namespace {

constexpr auto kNextAclRule = SWSH_OPTIONAL_CALL(swctl_platform_acl_rule_next);

}  // namespace

void each_rule(uint32_t unit, const RuleVisit &visit) {
  each_record(kNextAclRule, "rule", unit, 0, visit);
}

void expect_rules(uint32_t unit, const std::vector<int64_t> &rules) {
  if (kNextAclRule.find() == nullptr) return;
  std::vector<int64_t> there;
  each_rule(unit, [&](const swctl_platform_acl_rule &rule) { there.push_back(rule.index); });
  expect_among("rule", rules, there);
}

bool is_in_use(uint32_t unit, int32_t rule) {
  if (kNextAclRule.find() == nullptr) return false;
  const swctl_platform_acl_rule found =
      ask(kNextAclRule, "rule " + std::to_string(rule), unit, rule);
  return found.index == rule && is_in_use(found);
}

bool is_in_use(const swctl_platform_acl_rule &rule) {
  const auto is_set = [](uint32_t word) { return word != 0; };
  const bool matches = std::any_of(rule.written + CHIP_ACL_FIELD_TEMPLATE + 1,
                                   rule.written + CHIP_ACL_FIELD_IDS, is_set);
  const bool acts = std::any_of(rule.action.word, rule.action.word + CHIP_ACL_ACTION_WORDS, is_set);
  return rule.valid != 0 || matches || acts;
}

}  // namespace swsh
