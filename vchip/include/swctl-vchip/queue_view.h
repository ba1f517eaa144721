// SPDX-License-Identifier: MIT
/**
 * @file queue_view.h
 * @brief A view of the egress queues. See view.h.
 */
#ifndef SWCTL_VCHIP_QUEUE_VIEW_H
#define SWCTL_VCHIP_QUEUE_VIEW_H

#include <swctl/types.h>

#include <cstdint>
#include <vector>

namespace vchip {

// One queue, since a reset or vchip_drops_clear().
struct QueueView {
  uint64_t waiting;  // frames in it, as the process that has them last said
  uint64_t sent;     // frames that left through it
  uint64_t bytes;    // their wire length
  uint64_t dropped;  // frames that found it full
};
struct PortQueueView {
  uint64_t paused_until;  // the chip's clock, ns: until then the port sends nothing
  std::vector<QueueView> queues;
};
SWCTL_API PortQueueView port_queues(uint32_t unit, int32_t port);

}  // namespace vchip

#endif
