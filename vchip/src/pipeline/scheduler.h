// SPDX-License-Identifier: MIT
// Which queue of a port is next: strict queues first, then by weight.
//
// Weighted queues share by worst-case fair queueing: a queue is never more than
// a frame ahead of its share or short of it, and saves nothing while it is empty.
// Round robin counts frames, fair queueing bytes.
#ifndef VCHIP_PIPELINE_SCHEDULER_H
#define VCHIP_PIPELINE_SCHEDULER_H

#include <array>
#include <cstdint>

#include "qos/qos_block.h"

namespace vchip {

class Scheduler {
 public:
  // What a queue has waiting: the wire length of its first frame, 0 for none.
  using Heads = std::array<uint32_t, kQueues>;

  // A frame came into a queue that was empty.
  void begin(uint32_t queue);
  // The queue to send from; at least one waits. Looking changes nothing.
  uint32_t pick(const QosPort &settings, const Heads &heads) const;
  // Its first frame is sent.
  void sent(const QosPort &settings, const Heads &heads, uint32_t queue);

 private:
  struct View;
  uint64_t virtual_time_ = 0;
  std::array<uint64_t, kQueues> start_ = {};  // of the first frame, in virtual time
};

}  // namespace vchip

#endif
