// SPDX-License-Identifier: MIT
#include "acl/counter_block.h"

#include <vector>

#include "core/dump.h"

namespace vchip {

void CounterBlock::reset() {
  for (uint64_t &count : packets_) count = 0;
  for (uint64_t &count : bytes_) count = 0;
}

// A counter that is full begins again at 0.
void CounterBlock::count(uint32_t counter, uint64_t packets, uint64_t bytes) {
  packets_[counter] += packets;
  bytes_[counter] += bytes;
}

void CounterBlock::dump(const char *name, Dump &unit) const {
  std::vector<uint32_t> used;
  for (uint32_t counter = 0; counter < VCHIP_ACL_COUNTERS; ++counter)
    if ((packets_[counter] | bytes_[counter]) != 0) used.push_back(counter);
  unit.objects(name, used.size(), [&](Dump &entry, size_t index) {
    entry.number("counter", used[index]);
    entry.number("packets", static_cast<int64_t>(packets_[used[index]]));
    entry.number("bytes", static_cast<int64_t>(bytes_[used[index]]));
  });
}

}  // namespace vchip
