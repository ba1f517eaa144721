// SPDX-License-Identifier: MIT
// The SDK's calls on rules, and the platform's reading of them.
#include <swctl/platform/field_read.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <cstring>

#include "acl/acl_check.h"
#include "chip/chip.h"
#include "common/check.h"
#include "common/table.h"

using vchip::at_most;
using vchip::below;
using vchip::change;
using vchip::flag;
using vchip::look;
using vchip::not_null;
using vchip::on_rule;
using vchip::on_table;
using vchip::Unit;

namespace {

using vchip::AclTemplate;

// A copy of what a pointer leads to; zeroes for none.
template <typename Record>
Record copy_of(const Record *record) {
  return record == nullptr ? Record{} : *record;
}

AclTemplate template_of(const uint32_t *codes) {
  AclTemplate copy = {};
  if (codes != nullptr) std::copy_n(codes, copy.size(), copy.begin());
  return copy;
}

int32_t are_field_types(const AclTemplate &codes) {
  return at_most(*std::max_element(codes.begin(), codes.end()), vchip::kMaxFieldType);
}

int32_t are_templates(const vchip::AclSelector &words) {
  return at_most(*std::max_element(words.begin(), words.end()), vchip::kAclTemplates - 1);
}

// (0, 0, 0) leaves a rule alone, (0, 1, 0) joins it with the next one.
int32_t is_operation(const chip_acl_operation &operation) {
  const bool known = operation.word[0] == 0 && operation.word[1] <= 1 && operation.word[2] == 0;
  return known ? 0 : VCHIP_E_VALUE;
}

int32_t has_partner(int32_t rule, const chip_acl_operation &operation) {
  return operation.word[1] == 1 ? on_rule(rule + 1) : 0;
}

int32_t on_field(size_t place) {
  return place < vchip::kAclFields.size() ? 0 : VCHIP_E_FIELD;
}

int32_t fits_field(size_t place, const uint8_t *data) {
  return at_most(data[0], vchip::kAclFields[place].limit);
}

int32_t is_range(const chip_acl_range &range) {
  return range.first <= range.last ? 0 : VCHIP_E_VALUE;
}

// The first rule from `from` on that holds anything.
swctl_platform_acl_rule next_rule(const vchip::AclBlock &block, int32_t from) {
  swctl_platform_acl_rule found = {};
  found.index = vchip::first_used(from, VCHIP_ACL_RULES,
                                  [&](uint32_t index) { return block.rule(index).is_used(); });
  if (found.index < 0) return found;
  const auto number = static_cast<uint32_t>(found.index);
  const vchip::AclRule &rule = block.rule(number);
  found.valid = rule.valid;
  found.joined = rule.joined;
  found.action = block.action(number);
  for (size_t place = 0; place < vchip::kAclFields.size(); ++place) {
    if (!rule.has_field(place)) continue;
    const uint32_t id = vchip::kAclFields[place].id;
    found.written[id] = 1;
    memcpy(found.data[id], rule.field(place).data, chip_acl_field_bytes(id));
    memcpy(found.mask[id], rule.field(place).mask, chip_acl_field_bytes(id));
  }
  return found;
}

int32_t on_port_number(uint32_t port) {
  return port < VCHIP_PORTS ? 0 : VCHIP_E_PORT;
}

}  // namespace

int32_t rtk_acl_template_set(uint32_t unit, uint32_t index, const uint32_t *codes) {
  const AclTemplate copy = template_of(codes);
  return change(unit, {below(index, vchip::kAclTemplates), not_null(codes), are_field_types(copy)},
                [&](Unit &chip) { chip.acl.set_template(index, copy); });
}

int32_t rtk_acl_templateSelector_set(uint32_t unit, uint32_t index, uint32_t word1, uint32_t word2,
                                     uint32_t word3) {
  const vchip::AclSelector words = {word1, word2, word3};
  return change(unit, {below(index, vchip::kAclSelectors), are_templates(words)},
                [&](Unit &chip) { chip.acl.set_selector(index, words); });
}

int32_t rtk_acl_ruleEntryField_write(uint32_t unit, uint32_t table, int32_t rule, uint32_t field,
                                     const uint8_t *data, const uint8_t *mask) {
  const size_t place = vchip::place_of_field(field);
  const bool readable = on_field(place) == 0 && data != nullptr;
  return change(
      unit,
      {on_table(table), on_rule(rule), on_field(place), not_null(data, mask),
       readable ? fits_field(place, data) : 0},
      [=](Unit &chip) { chip.acl.write_field(static_cast<uint32_t>(rule), place, data, mask); });
}

int32_t rtk_acl_ruleOperation_set(uint32_t unit, uint32_t table, int32_t rule,
                                  const chip_acl_operation *operation) {
  const chip_acl_operation copy = copy_of(operation);
  return change(
      unit,
      {on_table(table), on_rule(rule), not_null(operation), is_operation(copy),
       on_rule(rule) == 0 ? has_partner(rule, copy) : 0},
      [=](Unit &chip) { chip.acl.set_joined(static_cast<uint32_t>(rule), copy.word[1] == 1); });
}

int32_t rtk_acl_ruleValidate_set(uint32_t unit, uint32_t table, int32_t rule, uint32_t valid) {
  return change(unit, {on_table(table), on_rule(rule), flag(valid)},
                [=](Unit &chip) { chip.acl.set_valid(static_cast<uint32_t>(rule), valid != 0); });
}

int32_t rtk_acl_rule_del(uint32_t unit, uint32_t table, const chip_acl_range *range) {
  const chip_acl_range copy = copy_of(range);
  return change(unit,
                {on_table(table), not_null(range), below(copy.first, VCHIP_ACL_RULES),
                 below(copy.last, VCHIP_ACL_RULES), is_range(copy)},
                [=](Unit &chip) {
                  for (uint32_t rule = copy.first; rule <= copy.last; ++rule) chip.acl.clear(rule);
                });
}

int32_t rtk_acl_ruleAction_get(uint32_t unit, uint32_t table, int32_t rule,
                               chip_acl_action *action) {
  return look(unit, {on_table(table), on_rule(rule), not_null(action)}, [=](const Unit &chip) {
    *action = chip.acl.action(static_cast<uint32_t>(rule));
    return 0;
  });
}

int32_t rtk_acl_ruleAction_set(uint32_t unit, uint32_t table, int32_t rule,
                               const chip_acl_action *action) {
  return change(unit, {on_table(table), on_rule(rule), not_null(action)},
                [=](Unit &chip) { chip.acl.set_action(static_cast<uint32_t>(rule), *action); });
}

int32_t rtk_acl_lookupMissAct_set(uint32_t unit, uint32_t target, uint32_t action) {
  return change(unit, {on_port_number(target), flag(action)},
                [=](Unit &chip) { chip.acl.set_miss(target, action); });
}

int32_t swctl_platform_acl_rule_next(uint32_t unit, int32_t from, swctl_platform_acl_rule *rule) {
  return look(unit, {not_null(rule), vchip::search_from(from)}, [=](const Unit &chip) {
    *rule = next_rule(chip.acl, from);
    return 0;
  });
}

int32_t swctl_platform_acl_miss_get(uint32_t unit, uint32_t target, uint32_t *action) {
  return look(unit, {on_port_number(target), not_null(action)}, [=](const Unit &chip) {
    *action = chip.acl.miss(target);
    return 0;
  });
}
