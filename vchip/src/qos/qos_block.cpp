// SPDX-License-Identifier: MIT
#include "qos/qos_block.h"

#include <algorithm>

#include "common/sound.h"

namespace vchip {
namespace {

bool are_priorities(const auto &words) {
  return are_at_most(words, kPriorities - 1);
}

bool is_whole(const QosMaps &maps) {
  const auto are_weights = [](const auto &weights) {
    return are_at_most(weights, kMaxSourceWeight);
  };
  return std::ranges::all_of(maps.outer, are_priorities<std::array<uint32_t, kPriorities>>) &&
         are_priorities(maps.inner) && are_priorities(maps.dscp) &&
         are_at_most(maps.queue, kQueues - 1) && std::ranges::all_of(maps.groups, are_weights) &&
         maps.remark_source <= kMaxRemarkSource;
}

bool is_whole_port(const QosPort &port) {
  return port.outer_priority < kPriorities && port.inner_priority < kPriorities &&
         port.group < kPriorityGroups && port.algorithm <= kMaxAlgorithm &&
         are_at_most(port.weights, kMaxQueueWeight);
}

}  // namespace

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void QosBlock::power_on() {
  maps_.remark_source = kMaxRemarkSource;
  for (QosPort &port : ports_) {
    port.group = kPriorityGroups - 1;
    port.weights.fill(kMaxQueueWeight);
  }
}

bool QosBlock::sound() const {
  return is_whole(maps_) && std::ranges::all_of(ports_, is_whole_port);
}

}  // namespace vchip
