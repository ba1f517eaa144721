// SPDX-License-Identifier: MIT
#include "traffic/queue_block.h"

namespace vchip {

void QueueBlock::clear(int32_t port) {
  for (QueueCounts &queue : ports_[static_cast<size_t>(port)].queues)
    queue = {queue.waiting, 0, 0, 0};
}

}  // namespace vchip
