// SPDX-License-Identifier: MIT
#include "acl/meter_block.h"

#include <algorithm>
#include <atomic>

#include "common/sound.h"

namespace vchip {
namespace {

constexpr uint64_t kBurstUnit = 128;  // bytes

}  // namespace

void MeterBlock::power_on() {
  burst_ = {{512, 61440}};
  for (uint32_t meter = 0; meter < VCHIP_METERS; ++meter) meters_[meter].bucket.fill_up(0);
}

bool MeterBlock::sound() const {
  return are_at_most(burst_.size, kMaxMeterBurst) &&
         std::ranges::all_of(meters_, [](const Meter &meter) {
           return meter.entry.rate <= kMaxMeterRate && meter.mode <= kMaxMeterMode &&
                  meter.entry.burst_slot < CHIP_ACL_BURST_SLOTS;
         });
}

Fill MeterBlock::fill(uint32_t meter) const {
  const chip_acl_meter &entry = meters_[meter].entry;
  return fill_of_bytes(entry.rate, uint64_t{burst_.size[entry.burst_slot]} * kBurstUnit);
}

void MeterBlock::set_burst(const chip_acl_burst &burst, uint64_t now) {
  const chip_acl_burst before = burst_;
  for (uint32_t meter = 0; meter < VCHIP_METERS; ++meter) {
    burst_ = before;
    const Fill old = fill(meter);
    burst_ = burst;
    meters_[meter].bucket.change(old, fill(meter), now);
  }
}

void MeterBlock::set_entry(uint32_t meter, const chip_acl_meter &entry, uint64_t now) {
  const Fill before = fill(meter);
  chip_acl_meter &target = meters_[meter].entry;
  const std::atomic_ref<uint32_t> enable(target.enable);
  enable.exchange(0);
  target.rate = entry.rate;
  target.burst_slot = entry.burst_slot;
  meters_[meter].bucket.change(before, fill(meter), now);
  enable.exchange(entry.enable);
}

}  // namespace vchip
