// SPDX-License-Identifier: MIT
#include <vector>

#include "document/dump.h"
#include "forward/flood_block.h"
#include "forward/learning_block.h"
#include "forward/mask_block.h"

namespace vchip {
namespace {

constexpr const char *kLearningModes[] = {"at-once", "by-software", "nothing"};
constexpr const char *kActionNames[] = {"forward", "drop", "trap-to-cpu", "copy-to-cpu"};

}  // namespace

void FloodBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    block.objects("isolation", VCHIP_PORTS, [this](Dump &entry, size_t port) {
      entry.number("port", static_cast<int64_t>(port));
      entry.ports("may_send_to", isolation_[port]);
    });
    block.numbers("miss_index", {miss_index_.begin(), miss_index_.end()});
  });
}

// Only places with a port, since most are empty.
void MaskBlock::dump(const char *name, Dump &unit) const {
  std::vector<uint32_t> used;
  for (uint32_t index = 0; index < kPortMasks; ++index)
    if (masks_[index].ports != 0) used.push_back(index);
  unit.objects(name, used.size(), [&](Dump &entry, size_t place) {
    entry.number("index", used[place]);
    entry.ports("ports", masks_[used[place]].ports);
  });
}

void LearningBlock::dump(const char *name, Dump &unit) const {
  unit.objects(name, VCHIP_PORTS, [this](Dump &entry, size_t port) {
    entry.number("port", static_cast<int64_t>(port));
    entry.text("learns", kLearningModes[ports_[port].mode]);
    entry.text("frame", kActionNames[number_of(ports_[port].action)]);
  });
}

}  // namespace vchip
