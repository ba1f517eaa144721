// SPDX-License-Identifier: MIT
/**
 * @file rule_view.h
 * @brief A view of the adapter's rules. See view.h.
 */
#ifndef SWCTL_VCHIP_RULE_VIEW_H
#define SWCTL_VCHIP_RULE_VIEW_H

#include <swctl/types.h>

#include <vector>

namespace vchip {

struct RuleActionView {
  uint32_t number;
  uint32_t value;

  bool operator==(const RuleActionView &) const = default;
};

// Bytes as they were handed over.
struct RuleQualifierView {
  uint32_t number;
  std::vector<uint8_t> value;
  std::vector<uint8_t> mask;  // empty: there is none

  bool operator==(const RuleQualifierView &) const = default;
};

// One rule; actions and qualifiers in the order in which they were added.
struct RuleView {
  uint32_t entity;
  uint32_t index;
  std::vector<RuleActionView> actions;
  std::vector<RuleQualifierView> qualifiers;

  bool operator==(const RuleView &) const = default;
};
// Every rule, by entity and index. Rules belong to the board, not to a unit.
SWCTL_API std::vector<RuleView> rules();

}  // namespace vchip

#endif
