// SPDX-License-Identifier: MIT
// The adapter's calls on rules. Qualifiers and actions only change the record
// of the caller; the board learns of a rule when it is handed over.
#include <swctl/platform/adapter.h>
#include <swctl/platform/vlan_read.h>

#include <algorithm>
#include <cstring>

#include "chip/chip.h"
#include "common/check.h"
#include "common/table.h"

namespace vchip {
namespace {

int32_t whole(const RuleArea &area) {
  return is_whole(area) ? 0 : VCHIP_E_VALUE;
}

RuleArea area_of(const adp_fp_entity_rule_t &rule) {
  RuleArea area;
  memcpy(&area, rule.area, sizeof area);
  return area;
}

template <typename List>
bool contains(const List &list, uint32_t count, uint32_t kind) {
  for (uint32_t place = 0; place < count; ++place)
    if (list[place].kind == kind) return true;
  return false;
}

int32_t possible_action(uint32_t kind, uint32_t value, uint32_t length) {
  const ActionKind *known = action_kind(kind);
  if (known == nullptr) return VCHIP_E_RULE_KIND;
  return length == sizeof value && value <= known->max ? 0 : VCHIP_E_VALUE;
}

// A mask is as long as its value, or there is none.
int32_t possible_qualifier(uint32_t kind, uint32_t length, const uint8_t *mask,
                           uint32_t mask_length) {
  const QualifierKind *known = qualifier_kind(kind);
  if (known == nullptr) return VCHIP_E_RULE_KIND;
  const uint32_t expected = mask == nullptr ? 0 : length;
  return length == known->length && mask_length == expected ? 0 : VCHIP_E_VALUE;
}

RuleQualifier make_qualifier(uint32_t kind, const uint8_t *value, uint32_t length,
                             const uint8_t *mask) {
  RuleQualifier qualifier = {};
  qualifier.kind = kind;
  qualifier.length = length;
  memcpy(qualifier.value, value, length);
  if (mask == nullptr) return qualifier;
  qualifier.masked = 1;
  memcpy(qualifier.mask, mask, length);
  return qualifier;
}

swctl_platform_entity_rule next_rule(const RuleBlock &rules, const EntityKind &kind, int32_t from) {
  swctl_platform_entity_rule found = {};
  found.index =
      first_used(from, kind.limit, [&](uint32_t index) { return rules.has(kind.first + index); });
  if (found.index < 0) return found;
  const RuleArea &area = rules.area(kind.first + static_cast<uint32_t>(found.index));
  found.actions = area.actions;
  found.qualifiers = area.qualifiers;
  std::copy_n(area.action, area.actions, found.action);
  std::copy_n(area.qualifier, area.qualifiers, found.qualifier);
  return found;
}

// Runs step(rules, place) for a rule that the adapter can hold.
template <typename Step>
int32_t change_rule(uint32_t entity, uint32_t index, int32_t check, Step step) {
  Locked chip;
  if (!chip) return chip.fault();
  const EntityKind *kind = entity_kind(entity);
  if (kind == nullptr) return VCHIP_E_RULE_KIND;
  if (index >= kind->limit) return VCHIP_E_INDEX;
  if (check != 0) return check;
  Writing mark(chip.state(), kChanging);
  return step(chip.state().rules, kind->first + index);
}

}  // namespace
}  // namespace vchip

int32_t adp_fp_add_entity_action(adp_fp_entity_rule_t *rule, uint32_t kind, const uint32_t *value,
                                 uint32_t value_length, const uint8_t *second,
                                 uint32_t second_length) {
  if (rule == nullptr || value == nullptr) return VCHIP_E_NULL;
  vchip::RuleArea area = vchip::area_of(*rule);
  const bool no_second = second == nullptr && second_length == 0;
  const int32_t fault = vchip::first_fault({vchip::whole(area), no_second ? 0 : VCHIP_E_VALUE,
                                            vchip::possible_action(kind, *value, value_length)});
  if (fault != 0) return fault;
  if (vchip::contains(area.action, area.actions, kind)) return VCHIP_E_DUPLICATE;
  area.action[area.actions++] = {kind, *value};
  memcpy(rule->area, &area, sizeof area);
  return 0;
}

int32_t adp_fp_add_entity_qualify(adp_fp_entity_rule_t *rule, uint32_t kind, const uint8_t *value,
                                  uint32_t value_length, const uint8_t *mask,
                                  uint32_t mask_length) {
  if (rule == nullptr || value == nullptr) return VCHIP_E_NULL;
  vchip::RuleArea area = vchip::area_of(*rule);
  const int32_t fault = vchip::first_fault(
      {vchip::whole(area), vchip::possible_qualifier(kind, value_length, mask, mask_length)});
  if (fault != 0) return fault;
  if (vchip::contains(area.qualifier, area.qualifiers, kind)) return VCHIP_E_DUPLICATE;
  area.qualifier[area.qualifiers++] = vchip::make_qualifier(kind, value, value_length, mask);
  memcpy(rule->area, &area, sizeof area);
  return 0;
}

int32_t adp_fp_add_entity_rule(adp_fp_entity_rule_t rule) {
  const vchip::RuleArea area = vchip::area_of(rule);
  return vchip::change_rule(rule.entity, rule.index, vchip::whole(area),
                            [&](vchip::RuleBlock &rules, uint32_t place) {
                              if (rules.has(place)) return VCHIP_E_RULE_EXISTS;
                              rules.add(place, area);
                              return 0;
                            });
}

int32_t adp_fp_delete_entity_rule(uint32_t entity, int32_t index, uint32_t option) {
  return vchip::change_rule(entity, static_cast<uint32_t>(index), vchip::at_most(option, 0),
                            [](vchip::RuleBlock &rules, uint32_t place) {
                              if (!rules.has(place)) return VCHIP_E_NO_RULE;
                              rules.remove(place);
                              return 0;
                            });
}

int32_t swctl_platform_entity_rule_next(uint32_t entity, int32_t from,
                                        swctl_platform_entity_rule *rule) {
  vchip::Locked chip;
  if (!chip) return chip.fault();
  const int32_t fault = vchip::first_fault({vchip::not_null(rule), vchip::search_from(from)});
  if (fault != 0) return fault;
  const vchip::EntityKind *kind = vchip::entity_kind(entity);
  if (kind == nullptr) return VCHIP_E_RULE_KIND;
  *rule = vchip::next_rule(chip.state().rules, *kind, from);
  return 0;
}
