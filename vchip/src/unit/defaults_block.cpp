// SPDX-License-Identifier: MIT
#include "unit/defaults_block.h"

#include <swctl-vchip/defaults_view.h>
#include <swctl/platform/sdk.h>

#include "core/check.h"
#include "core/dump.h"
#include "core/viewing.h"

namespace vchip {
namespace {

int32_t on_lookup_type(uint32_t type) {
  return type < kLookupMissTypes ? 0 : VCHIP_E_INDEX;
}

int32_t on_flood_mask(uint32_t index) {
  return index < kFloodPortMasks ? 0 : VCHIP_E_INDEX;
}

}  // namespace

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void DefaultsBlock::reset() {
  zero_source_learned_ = 1;
  flood_mask_index_.fill(0);
  priority_source_ = kMaxPrioritySource;
  meters_count_gap_ = 1;
}

void DefaultsBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    block.flag("zero_source_learned", zero_source_learned());
    block.numbers("flood_mask_index", {flood_mask_index_.begin(), flood_mask_index_.end()});
    block.number("priority_source", priority_source_);
    block.flag("meters_count_gap", meters_count_gap());
  });
}

DefaultsView defaults(uint32_t unit) {
  Viewing chip;
  const DefaultsBlock &block = chip.unit(unit).defaults;
  return {block.zero_source_learned(),
          {block.flood_mask_index().begin(), block.flood_mask_index().end()},
          block.priority_source(),
          block.meters_count_gap()};
}

}  // namespace vchip

int32_t rtk_l2_zeroSALearningEnable_set(uint32_t unit, uint32_t enable) {
  return vchip::change(unit, {vchip::flag(enable)}, [=](vchip::Unit &chip) {
    chip.defaults.set_zero_source_learned(enable != 0);
  });
}

int32_t rtk_l2_lookupMissFloodPortMaskIdx_set(uint32_t unit, uint32_t type, uint32_t index) {
  return vchip::change(unit, {vchip::on_lookup_type(type), vchip::on_flood_mask(index)},
                       [=](vchip::Unit &chip) { chip.defaults.set_flood_mask_index(type, index); });
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
