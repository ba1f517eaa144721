// SPDX-License-Identifier: MIT
// What the chip knows of its egress queues. The frames in them belong to the
// process that sends them; here is what they have counted and what holds them.
#ifndef VCHIP_TRAFFIC_QUEUE_BLOCK_H
#define VCHIP_TRAFFIC_QUEUE_BLOCK_H

#include <swctl-vchip/vchip.h>

#include <array>
#include <cstdint>

#include "common/numbers.h"

namespace vchip {

class Dump;
class Findings;

struct QueueCounts {
  uint64_t waiting;  // frames in it, as the process that has them last said
  uint64_t sent;     // frames that left through it
  uint64_t bytes;    // their wire length
  uint64_t dropped;  // frames that found it full
};

class QueueBlock {
 public:
  using Queues = std::array<QueueCounts, kQueues>;

  static constexpr uint32_t kLayout = 1;
  void power_on() {}  // all zero
  void repair() {}    // counters, and a time that is a single word
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  const Queues &queues(int32_t port) const { return ports_[static_cast<size_t>(port)].queues; }
  QueueCounts &queue(int32_t port, uint32_t queue) {
    return ports_[static_cast<size_t>(port)].queues[queue];
  }
  // Frames that wait stay; what was counted goes.
  void clear(int32_t port) {
    for (QueueCounts &queue : ports_[static_cast<size_t>(port)].queues)
      queue = {queue.waiting, 0, 0, 0};
  }

  // A pause frame's end. Until then the port sends nothing.
  uint64_t paused_until(int32_t port) const {
    return ports_[static_cast<size_t>(port)].paused_until;
  }
  void pause(int32_t port, uint64_t until) {
    ports_[static_cast<size_t>(port)].paused_until = until;
  }

 private:
  struct Port {
    Queues queues;
    uint64_t paused_until;
  };
  std::array<Port, VCHIP_PORTS> ports_;
};

}  // namespace vchip

#endif
