// SPDX-License-Identifier: MIT
#include "acl/meter_block.h"

#include <atomic>

namespace vchip {

void MeterBlock::reset() {
  for (Meter &meter : meters_) meter = {};
  burst_ = {{512, 61440}};
}

void MeterBlock::set_entry(uint32_t meter, const chip_acl_meter &entry) {
  chip_acl_meter &target = meters_[meter].entry;
  const std::atomic_ref<uint32_t> enable(target.enable);
  enable.exchange(0);
  target.rate = entry.rate;
  target.burst_slot = entry.burst_slot;
  enable.exchange(entry.enable);
}

}  // namespace vchip
