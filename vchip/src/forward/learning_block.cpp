// SPDX-License-Identifier: MIT
#include "forward/learning_block.h"

#include <algorithm>
#include <iterator>

#include "core/dump.h"

namespace vchip {
namespace {

constexpr const char *kModes[] = {"at-once", "by-software", "nothing"};
constexpr const char *kActions[] = {"forward", "drop", "trap-to-cpu", "copy-to-cpu"};

}  // namespace

void LearningBlock::reset() {
  for (NewAddress &port : ports_) port = {0, 0};
}

bool LearningBlock::sound() const {
  return std::all_of(std::begin(ports_), std::end(ports_), [](const NewAddress &port) {
    return port.mode <= kLastLearningMode && port.action <= kLastNewAddressAction;
  });
}

void LearningBlock::dump(const char *name, Dump &unit) const {
  unit.objects(name, VCHIP_PORTS, [this](Dump &entry, size_t port) {
    entry.number("port", static_cast<int64_t>(port));
    entry.text("learns", kModes[ports_[port].mode]);
    entry.text("frame", kActions[ports_[port].action]);
  });
}

}  // namespace vchip
