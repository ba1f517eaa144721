// SPDX-License-Identifier: MIT
// Rules that the platform adapter keeps.
#ifndef SWCTL_SRC_VLAN_ENTITY_RULE_H
#define SWCTL_SRC_VLAN_ENTITY_RULE_H

#include <swctl/platform/adapter.h>

#include <cstddef>

namespace swctl {

static_assert(sizeof(adp_fp_entity_rule_t) == 6268);
static_assert(offsetof(adp_fp_entity_rule_t, index) == 8);
static_assert(offsetof(adp_fp_entity_rule_t, area) == 20);

// A kind of rule: the adapter's number for it, how many indexes callers have,
// and where theirs begin among the adapter's.
struct RuleKind {
  uint32_t entity;
  int32_t limit;
  int32_t first;
};

// Signed on purpose: a negative index is the adapter's to judge.
constexpr bool has_index(const RuleKind &kind, int32_t index) {
  return index < kind.limit;
}

// One rule while it is put together. The adapter's answers are not looked at:
// it owns the rules, and a caller has no other way to make one.
class EntityRule {
 public:
  EntityRule(const RuleKind &kind, int32_t index) {
    record_.entity = kind.entity;
    record_.index = static_cast<uint32_t>(index) + static_cast<uint32_t>(kind.first);
  }

  void act(uint32_t action, uint32_t value) {
    adp_fp_add_entity_action(&record_, action, &value, sizeof value, nullptr, 0);
  }
  // Values and masks lie in memory as the caller's machine writes them.
  void match_masked(uint32_t qualifier, const void *value, const void *mask, uint32_t length) {
    adp_fp_add_entity_qualify(&record_, qualifier, static_cast<const uint8_t *>(value), length,
                              static_cast<const uint8_t *>(mask), length);
  }
  void match_word(uint32_t qualifier, uint32_t value) {
    adp_fp_add_entity_qualify(&record_, qualifier, reinterpret_cast<const uint8_t *>(&value),
                              sizeof value, nullptr, 0);
  }
  void match_half(uint32_t qualifier, uint16_t value) {
    constexpr uint16_t kWhole = 0xFFFF;
    match_masked(qualifier, &value, &kWhole, sizeof value);
  }

  int32_t hand_over() const {
    adp_fp_add_entity_rule(record_);
    return 0;
  }

 private:
  adp_fp_entity_rule_t record_ = {};
};

}  // namespace swctl

#endif
