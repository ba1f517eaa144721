// SPDX-License-Identifier: MIT
#include "document/findings.h"
#include "rules/rule_block.h"

namespace vchip {
namespace {

template <typename List>
bool has_before(const List &list, uint32_t place) {
  for (uint32_t before = 0; before < place; ++before)
    if (list[before].kind == list[place].kind) return true;
  return false;
}

template <typename List>
void check_list(Findings &findings, const char *name, const List &list, uint32_t count) {
  findings.each(name, list, [&](const auto &element, size_t index) {
    const auto place = static_cast<uint32_t>(index);
    if (place >= count) return;
    findings.rule(is_known(element), "", "is of no known kind, length or value");
    findings.rule(!has_before(list, place), "kind", "is there twice");
  });
}

void name_words(Findings &findings, const RuleArea &area) {
  findings.any("actions", area.actions);
  findings.any("qualifiers", area.qualifiers);
  findings.each("action", area.action, [&](const RuleAction &action, size_t) {
    findings.any("kind", action.kind);
    findings.any("value", action.value);
  });
  findings.each("qualifier", area.qualifier, [&](const RuleQualifier &qualifier, size_t) {
    findings.any("kind", qualifier.kind);
    findings.any("length", qualifier.length);
    findings.any("masked", qualifier.masked);
    findings.any("value", qualifier.value);
    findings.any("mask", qualifier.mask);
  });
}

}  // namespace

// What is after the counts, and in a place without a rule, is what the caller's
// record had there.
void RuleBlock::check(Findings &findings) const {
  findings.each("rules", rules_, [&](const Rule &rule, size_t) {
    findings.flag("exists", rule.exists);
    name_words(findings, rule.area);
    if (rule.exists == 0) return;
    findings.at_most("actions", rule.area.actions, kActionKinds);
    findings.at_most("qualifiers", rule.area.qualifiers, kQualifierKinds);
    check_list(findings, "action", rule.area.action, rule.area.actions);
    check_list(findings, "qualifier", rule.area.qualifier, rule.area.qualifiers);
  });
}

}  // namespace vchip
