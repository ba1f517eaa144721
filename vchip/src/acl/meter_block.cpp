// SPDX-License-Identifier: MIT
#include "acl/meter_block.h"

#include <atomic>
#include <vector>

#include "core/dump.h"

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

void MeterBlock::dump_meter(Dump &entry, uint32_t number) const {
  const Meter &meter = meters_[number];
  entry.number("meter", number);
  entry.flag("enabled", meter.entry.enable != 0);
  entry.number("rate", meter.entry.rate);
  entry.number("burst_slot", meter.entry.burst_slot);
  entry.number("mode", meter.mode);
}

// Meters that are as after power-on are left out.
void MeterBlock::dump(const char *name, Dump &unit) const {
  std::vector<uint32_t> used;
  for (uint32_t number = 0; number < VCHIP_METERS; ++number) {
    const Meter &meter = meters_[number];
    if ((meter.entry.enable | meter.entry.rate | meter.entry.burst_slot | meter.mode) != 0)
      used.push_back(number);
  }
  unit.object(name, [&](Dump &block) {
    block.objects("meters", used.size(),
                  [&](Dump &entry, size_t index) { dump_meter(entry, used[index]); });
    block.numbers("burst_sizes", {burst_.size, burst_.size + CHIP_ACL_BURST_SLOTS});
  });
}

}  // namespace vchip
