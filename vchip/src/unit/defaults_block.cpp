// SPDX-License-Identifier: MIT
#include "unit/defaults_block.h"

#include <swctl-vchip/defaults_view.h>
#include <swctl/platform/sdk.h>

#include "core/check.h"
#include "core/dump.h"
#include "core/viewing.h"

namespace vchip {

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void DefaultsBlock::reset() {
  zero_source_learned_ = 1;
  priority_source_ = kMaxPrioritySource;
  meters_count_gap_ = 1;
}

void DefaultsBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    block.flag("zero_source_learned", zero_source_learned());
    block.number("priority_source", priority_source_);
    block.flag("meters_count_gap", meters_count_gap());
  });
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

}  // namespace vchip

int32_t rtk_l2_zeroSALearningEnable_set(uint32_t unit, uint32_t enable) {
  return vchip::change(unit, {vchip::flag(enable)}, [=](vchip::Unit &chip) {
    chip.defaults.set_zero_source_learned(enable != 0);
  });
}

int32_t rtk_qos_1pDfltPriSrcSel_set(uint32_t unit, uint32_t source) {
  return vchip::change(unit, {vchip::at_most(source, vchip::kMaxPrioritySource)},
                       [=](vchip::Unit &chip) { chip.defaults.set_priority_source(source); });
}

int32_t rtk_acl_meterIncludeIfg_set(uint32_t unit, uint32_t include) {
  return vchip::change(unit, {vchip::flag(include)}, [=](vchip::Unit &chip) {
    chip.defaults.set_meters_count_gap(include != 0);
  });
}
