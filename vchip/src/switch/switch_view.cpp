// SPDX-License-Identifier: MIT
#include <swctl-vchip/attack_view.h>
#include <swctl-vchip/defaults_view.h>
#include <swctl-vchip/view.h>

#include "chip/viewing.h"

namespace vchip {

SwitchView switch_wide(uint32_t unit) {
  Viewing chip;
  const SwitchBlock &block = chip.unit(unit).switch_wide;
  return {block.tag_counts(),
          {block.max_length().begin(), block.max_length().end()},
          {block.cpu_format().begin(), block.cpu_format().end()}};
}

DefaultsView defaults(uint32_t unit) {
  Viewing chip;
  const Unit &subject = chip.unit(unit);
  const DefaultsBlock &block = subject.defaults;
  const auto &indexes = subject.flood.miss_index();
  return {block.zero_source_learned(),
          {indexes.begin(), indexes.end()},
          block.priority_source(),
          block.meters_count_gap()};
}

AttackView attacks(uint32_t unit) {
  Viewing chip;
  const AttackBlock &block = chip.unit(unit).attack;
  return {block.protected_ports(), {block.actions().begin(), block.actions().end()}};
}

}  // namespace vchip
