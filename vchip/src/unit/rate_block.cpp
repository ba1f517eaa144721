// SPDX-License-Identifier: MIT
#include "unit/rate_block.h"

#include <swctl/platform/sdk.h>

#include "core/check.h"
#include "core/chip.h"
#include "core/dump.h"

namespace vchip {
namespace {

constexpr uint32_t kCountBytes = 0;
constexpr uint32_t kCountPackets = 1;

int32_t on_storm_type(uint32_t type) {
  return type < kStormTypes ? 0 : VCHIP_E_INDEX;
}

}  // namespace

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void RateBlock::reset() {
  storm_mode_ = kCountPackets;
  storm_burst_.fill(0);
}

void RateBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    block.number("storm_mode", storm_mode_);
    block.text("storm_counts", storm_mode_ == kCountBytes ? "bytes" : "packets");
    block.numbers("storm_burst", {storm_burst_.begin(), storm_burst_.end()});
  });
}

}  // namespace vchip

int32_t rtk_rate_stormControlRateMode_set(uint32_t unit, uint32_t mode) {
  return vchip::change(unit, {vchip::at_most(mode, vchip::kCountPackets)},
                       [=](vchip::Unit &chip) { chip.rate.set_storm_mode(mode); });
}

int32_t rtk_rate_stormControlBurstSize_set(uint32_t unit, uint32_t type, uint32_t size) {
  return vchip::change(unit,
                       {vchip::on_storm_type(type), vchip::at_most(size, vchip::kMaxStormBurst)},
                       [=](vchip::Unit &chip) { chip.rate.set_storm_burst(type, size); });
}
