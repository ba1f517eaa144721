// SPDX-License-Identifier: MIT
// The pictures of the clock, the fates of frames and the queues.
#include <vector>

#include "document/dump.h"
#include "traffic/drop_block.h"
#include "traffic/queue_block.h"
#include "traffic/time_block.h"

namespace vchip {

void TimeBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [&](Dump &block) { block.number("clock", static_cast<int64_t>(clock_)); });
}

void DropBlock::dump(const char *name, Dump &unit) const {
  unit.objects(name, VCHIP_PORTS, [&](Dump &entry, size_t port) {
    entry.number("port", static_cast<int64_t>(port));
    entry.object("counts", [&](Dump &counts) {
      for (uint32_t fate = 0; fate < kFates; ++fate)
        counts.number(fate_name(static_cast<Fate>(fate)), static_cast<int64_t>(ports_[port][fate]));
    });
  });
}

void QueueBlock::dump(const char *name, Dump &unit) const {
  unit.objects(name, VCHIP_PORTS, [&](Dump &entry, size_t port) {
    const Port &own = ports_[port];
    entry.number("port", static_cast<int64_t>(port));
    entry.number("paused_until", static_cast<int64_t>(own.paused_until));
    entry.objects("queues", kQueues, [&](Dump &queue, size_t number) {
      const QueueCounts &counts = own.queues[number];
      queue.number("waiting", static_cast<int64_t>(counts.waiting));
      queue.number("sent", static_cast<int64_t>(counts.sent));
      queue.number("bytes", static_cast<int64_t>(counts.bytes));
      queue.number("dropped", static_cast<int64_t>(counts.dropped));
    });
  });
}

}  // namespace vchip
