// SPDX-License-Identifier: MIT
#include "acl/acl_block.h"

#include <atomic>
#include <cstring>

#include "acl/acl_action.h"
#include "common/table.h"

namespace vchip {
namespace {

constexpr uint32_t kTemplateBit = 1u << place_of_field(CHIP_ACL_FIELD_TEMPLATE);

// A mark that stands before what is written and after it, in the program and
// in what a killed process leaves.
void mark(uint32_t &word, uint32_t value) {
  std::atomic_ref<uint32_t>(word).exchange(value);
}

}  // namespace

void AclBlock::reset() {
  for (AclTemplate &each : templates_) each.fill(0);
  for (AclSelector &each : selectors_) each.fill(0);
  for (uint32_t &miss : misses_) miss = 0;
  for (Rule &rule : rules_) {
    rule.valid = 0;
    rule.joined = 0;
    rule.has_action = 0;
    rule.written = 0;
  }
}

void AclBlock::write_field(uint32_t rule, size_t place, const uint8_t *data, const uint8_t *mask) {
  Rule &target = rules_[rule];
  const uint32_t bit = 1u << place;
  const uint32_t bytes = chip_acl_field_bytes(kAclFields[place].id);
  mark(target.written, target.written & ~bit);
  memcpy(target.fields[place].data, data, bytes);
  memcpy(target.fields[place].mask, mask, bytes);
  mark(target.written, target.written | bit);
}

chip_acl_action AclBlock::action(uint32_t rule) const {
  return rules_[rule].has_action != 0 ? rules_[rule].action : chip_acl_action{};
}

void AclBlock::set_action(uint32_t rule, const chip_acl_action &action) {
  Rule &target = rules_[rule];
  mark(target.has_action, 0);
  target.action = action;
  mark(target.has_action, 1);
}

void AclBlock::clear(uint32_t rule) {
  Rule &target = rules_[rule];
  mark(target.valid, 0);
  mark(target.has_action, 0);
  mark(target.written, target.written & kTemplateBit);
}

bool AclBlock::is_used(const Rule &rule) {
  return (rule.valid | rule.joined | rule.has_action | rule.written) != 0;
}

AclRuleView AclBlock::view(uint32_t number) const {
  const Rule &rule = rules_[number];
  AclRuleView view = {};
  view.rule = static_cast<int32_t>(number);
  view.used = is_used(rule);
  view.valid = rule.valid != 0;
  view.joined = rule.joined != 0;
  for (size_t place = 0; place < kAclFields.size(); ++place) {
    if ((rule.written >> place & 1) == 0) continue;
    const AclField &field = kAclFields[place];
    const FieldValue &value = rule.fields[place];
    const uint32_t bytes = chip_acl_field_bytes(field.id);
    view.match.push_back({field.id,
                          field.name,
                          {value.data, value.data + bytes},
                          {value.mask, value.mask + bytes},
                          field_text(field, value)});
  }
  const chip_acl_action record = action(number);
  view.action.assign(record.word, record.word + CHIP_ACL_ACTION_WORDS);
  view.actions = action_texts(record);
  return view;
}

swctl_platform_acl_rule AclBlock::next(int32_t from) const {
  swctl_platform_acl_rule found = {};
  found.index =
      first_used(from, VCHIP_ACL_RULES, [this](uint32_t index) { return is_used(rules_[index]); });
  if (found.index < 0) return found;
  const auto number = static_cast<uint32_t>(found.index);
  const Rule &rule = rules_[number];
  found.valid = rule.valid;
  found.joined = rule.joined;
  found.action = action(number);
  for (size_t place = 0; place < kAclFields.size(); ++place) {
    if ((rule.written >> place & 1) == 0) continue;
    const uint32_t id = kAclFields[place].id;
    found.written[id] = 1;
    memcpy(found.data[id], rule.fields[place].data, chip_acl_field_bytes(id));
    memcpy(found.mask[id], rule.fields[place].mask, chip_acl_field_bytes(id));
  }
  return found;
}

}  // namespace vchip
