// SPDX-License-Identifier: MIT
#include "unit/switch_block.h"

#include <swctl/platform/sdk.h>

#include "core/check.h"
#include "core/chip.h"
#include "core/dump.h"

namespace vchip {
namespace {

constexpr uint32_t kPowerOnLength = 1518;

int32_t possible_length(uint32_t length) {
  return length >= kMinFrameLength && length <= kMaxFrameLength ? 0 : VCHIP_E_VALUE;
}

}  // namespace

void SwitchBlock::reset() {
  tag_counts_ = 1;
  max_length_.fill(kPowerOnLength);
  cpu_format_.fill(0);
}

void SwitchBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    block.flag("tag_counts_in_length", tag_counts());
    block.numbers("max_length", {max_length_.begin(), max_length_.end()});
    block.numbers("cpu_format", {cpu_format_.begin(), cpu_format_.end()});
  });
}

}  // namespace vchip

int32_t rtk_switch_maxPktLenTagLenCntIncEnable_set(uint32_t unit, uint32_t enable) {
  return vchip::change(unit, {vchip::flag(enable)},
                       [=](vchip::Unit &chip) { chip.switch_wide.set_tag_counts(enable != 0); });
}

int32_t rtk_switch_maxPktLenLinkSpeed_get(uint32_t unit, uint32_t speed_class, uint32_t *length) {
  return vchip::look(unit,
                     {vchip::not_null(length), vchip::below(speed_class, vchip::kSpeedClasses)},
                     [=](const vchip::Unit &chip) {
                       *length = chip.switch_wide.max_length()[speed_class];
                       return 0;
                     });
}

int32_t rtk_switch_maxPktLenLinkSpeed_set(uint32_t unit, uint32_t speed_class, uint32_t length) {
  return vchip::change(
      unit, {vchip::below(speed_class, vchip::kSpeedClasses), vchip::possible_length(length)},
      [=](vchip::Unit &chip) { chip.switch_wide.set_max_length(speed_class, length); });
}

int32_t rtk_switch_pkt2CpuTypeFormat_set(uint32_t unit, uint32_t type, uint32_t format) {
  return vchip::change(
      unit,
      {vchip::below(type, vchip::kCpuFrameKinds), vchip::at_most(format, vchip::kMaxCpuFormat)},
      [=](vchip::Unit &chip) { chip.switch_wide.set_cpu_format(type, format); });
}
