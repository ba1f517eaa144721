// SPDX-License-Identifier: MIT
#include <swctl-vchip/queue_view.h>

#include "chip/viewing.h"

namespace vchip {

PortQueueView port_queues(uint32_t unit, int32_t port) {
  Viewing chip;
  const QueueBlock &block = chip.unit(unit).queue;
  expect_port(port);
  PortQueueView view = {block.paused_until(port), {}};
  for (const QueueCounts &queue : block.queues(port))
    view.queues.push_back({queue.waiting, queue.sent, queue.bytes, queue.dropped});
  return view;
}

}  // namespace vchip
