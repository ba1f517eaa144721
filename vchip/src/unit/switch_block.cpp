// SPDX-License-Identifier: MIT
#include "unit/switch_block.h"

#include <swctl/platform/sdk.h>

#include "core/check.h"
#include "core/chip.h"
#include "core/dump.h"

namespace vchip {

void SwitchBlock::reset() {
  tag_counts_ = 1;
}

void SwitchBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) { block.flag("tag_counts_in_length", tag_counts()); });
}

}  // namespace vchip

int32_t rtk_switch_maxPktLenTagLenCntIncEnable_set(uint32_t unit, uint32_t enable) {
  return vchip::change(unit, {vchip::flag(enable)},
                       [=](vchip::Unit &chip) { chip.switch_wide.set_tag_counts(enable != 0); });
}
