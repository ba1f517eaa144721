// SPDX-License-Identifier: MIT
#include <swctl-vchip/acl_view.h>

#include "acl/acl_action.h"
#include "acl/acl_check.h"
#include "chip/viewing.h"

namespace vchip {
namespace {

// Throws for a check that did not pass.
void expect(int32_t check, const char *what, int64_t number) {
  if (check != 0) throw std::out_of_range(std::string("no ") + what + ' ' + std::to_string(number));
}

AclFieldView view_of(const AclField &field, const FieldValue &value) {
  const uint32_t bytes = chip_acl_field_bytes(field.id);
  return {field.id,
          field.name,
          {value.data, value.data + bytes},
          {value.mask, value.mask + bytes},
          field_text(field, value)};
}

AclRuleView view_of(const AclBlock &block, uint32_t number) {
  const AclRule &rule = block.rule(number);
  const chip_acl_action &action = block.action(number);
  AclRuleView view = {static_cast<int32_t>(number),
                      rule.is_used(),
                      rule.valid != 0,
                      rule.joined != 0,
                      {},
                      {action.word, action.word + CHIP_ACL_ACTION_WORDS},
                      action_texts(action)};
  for (size_t place = 0; place < kAclFields.size(); ++place)
    if (rule.has_field(place)) view.match.push_back(view_of(kAclFields[place], rule.field(place)));
  return view;
}

}  // namespace

AclRuleView acl_rule(uint32_t unit, int32_t rule) {
  Viewing chip;
  const AclBlock &block = chip.unit(unit).acl;
  expect(on_rule(rule), "rule", rule);
  return view_of(block, static_cast<uint32_t>(rule));
}

std::vector<AclRuleView> acl_rules(uint32_t unit) {
  Viewing chip;
  const AclBlock &block = chip.unit(unit).acl;
  std::vector<AclRuleView> all;
  for (uint32_t rule = 0; rule < VCHIP_ACL_RULES; ++rule)
    if (block.rule(rule).is_used()) all.push_back(view_of(block, rule));
  return all;
}

AclFormView acl_form(uint32_t unit) {
  Viewing chip;
  const AclBlock &block = chip.unit(unit).acl;
  AclFormView form;
  for (uint32_t index = 0; index < kAclTemplates; ++index) {
    const AclTemplate &codes = block.template_at(index);
    form.templates.emplace_back(codes.begin(), codes.end());
  }
  for (uint32_t index = 0; index < kAclSelectors; ++index) {
    const AclSelector &words = block.selector(index);
    form.selectors.emplace_back(words.begin(), words.end());
  }
  for (uint32_t port = 0; port < VCHIP_PORTS; ++port) form.misses.push_back(block.miss(port));
  return form;
}

MeterView meter(uint32_t unit, uint32_t meter) {
  Viewing chip;
  const MeterBlock &block = chip.unit(unit).meter;
  expect(below(meter, VCHIP_METERS), "meter", meter);
  const chip_acl_meter &entry = block.entry(meter);
  return {entry.enable != 0, entry.rate, entry.burst_slot, block.mode(meter)};
}

std::vector<uint32_t> burst_sizes(uint32_t unit) {
  Viewing chip;
  const chip_acl_burst &burst = chip.unit(unit).meter.burst();
  return {burst.size, burst.size + CHIP_ACL_BURST_SLOTS};
}

AclCountView acl_count(uint32_t unit, uint32_t counter) {
  Viewing chip;
  const AclCountBlock &block = chip.unit(unit).acl_count;
  expect(below(counter, VCHIP_ACL_COUNTERS), "counter", counter);
  return {block.packets(counter), block.bytes(counter)};
}

}  // namespace vchip
