// SPDX-License-Identifier: MIT
#include "document/findings.h"
#include "traffic/drop_block.h"
#include "traffic/queue_block.h"
#include "traffic/time_block.h"

namespace vchip {

void TimeBlock::check(Findings &findings) const {
  findings.any("clock", clock_);
}

void DropBlock::check(Findings &findings) const {
  findings.each("ports", ports_, [&](const Counts &counts, size_t) {
    findings.any("counts", counts);
    uint64_t sum = 0;
    for (auto fate = static_cast<size_t>(kFirstSummand); fate <= static_cast<size_t>(kLastSummand);
         ++fate)
      sum += counts[fate];
    const uint64_t received = counts[static_cast<size_t>(Fate::received)];
    findings.rule(
        received == sum, "received",
        std::to_string(received) + ", but " + std::to_string(sum) + " frames have come to an end");
  });
}

void QueueBlock::check(Findings &findings) const {
  findings.each("ports", ports_, [&](const Port &port, size_t) {
    findings.each("queues", port.queues, [&](const QueueCounts &queue, size_t) {
      findings.any("waiting", queue.waiting);
      findings.any("sent", queue.sent);
      findings.any("bytes", queue.bytes);
      findings.any("dropped", queue.dropped);
    });
    findings.any("paused_until", port.paused_until);
  });
}

}  // namespace vchip
