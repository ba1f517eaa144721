// SPDX-License-Identifier: MIT
#include <vector>

#include "acl/acl_count_block.h"
#include "acl/meter_block.h"
#include "document/dump.h"

namespace vchip {

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

void AclCountBlock::dump(const char *name, Dump &unit) const {
  std::vector<uint32_t> used;
  for (uint32_t counter = 0; counter < VCHIP_ACL_COUNTERS; ++counter)
    if ((packets_[counter] | bytes_[counter]) != 0) used.push_back(counter);
  unit.objects(name, used.size(), [&](Dump &entry, size_t index) {
    entry.number("counter", used[index]);
    entry.count("packets", packets_[used[index]]);
    entry.count("bytes", bytes_[used[index]]);
  });
}

}  // namespace vchip
