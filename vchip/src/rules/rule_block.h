// SPDX-License-Identifier: MIT
// The adapter's rules. They belong to the board, not to a unit.
#ifndef VCHIP_RULES_RULE_BLOCK_H
#define VCHIP_RULES_RULE_BLOCK_H

#include <functional>

#include "rules/rule_kinds.h"

namespace vchip {

class Dump;
class Findings;

class RuleBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on() {}  // all zero
  void repair() {}    // a rule is not there while it is written
  bool sound() const;
  void dump(const char *name, Dump &board) const;
  void check(Findings &findings) const;

  const RuleArea &area(uint32_t place) const { return rules_[place].area; }
  bool has(uint32_t place) const { return rules_[place].exists != 0; }
  void add(uint32_t place, const RuleArea &area);
  void remove(uint32_t place);
  // The values of rules come from a machine of the other byte order.
  void turn_values();
  // By kind, then by index.
  void each_rule(
      const std::function<void(const EntityKind &, uint32_t, const RuleArea &)> &visit) const;

 private:
  struct Rule {
    uint32_t exists;
    RuleArea area;
  };
  Rule rules_[kRules];
};

}  // namespace vchip

#endif
