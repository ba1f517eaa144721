// SPDX-License-Identifier: MIT
#include <swctl-vchip/rule_view.h>

#include "chip/viewing.h"

namespace vchip {
namespace {

RuleView view_of(const EntityKind &kind, uint32_t index, const RuleArea &area) {
  RuleView view = {kind.entity, index, {}, {}};
  for (uint32_t place = 0; place < area.actions; ++place)
    view.actions.push_back({area.action[place].kind, area.action[place].value});
  for (uint32_t place = 0; place < area.qualifiers; ++place) {
    const RuleQualifier &each = area.qualifier[place];
    const uint32_t mask_length = each.masked != 0 ? each.length : 0;
    view.qualifiers.push_back(
        {each.kind, {each.value, each.value + each.length}, {each.mask, each.mask + mask_length}});
  }
  return view;
}

}  // namespace

std::vector<RuleView> rules() {
  Viewing chip;
  std::vector<RuleView> all;
  chip.state().rules.each_rule([&](const EntityKind &kind, uint32_t index, const RuleArea &area) {
    all.push_back(view_of(kind, index, area));
  });
  return all;
}

}  // namespace vchip
