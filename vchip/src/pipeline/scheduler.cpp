// SPDX-License-Identifier: MIT
#include "pipeline/scheduler.h"

#include <algorithm>

namespace vchip {
namespace {

// Virtual time that a frame, or a byte, takes at weight 1. Large enough that
// rounding does not show, small enough that 2^24 of the longest frames fit.
constexpr uint64_t kUnit = uint64_t{1} << 24;
constexpr uint32_t kFairQueueing = 0;  // algorithm word; 1: round robin
constexpr uint64_t kRebase = uint64_t{1} << 62;

bool is_strict(const QosPort &settings, uint32_t queue) {
  return settings.strict[queue] != 0 || settings.weights[queue] == 0;
}

// In virtual time at weight 1.
uint64_t cost_of(const QosPort &settings, uint32_t wire) {
  return settings.algorithm == kFairQueueing ? wire * kUnit : kUnit;
}

bool competes(const QosPort &settings, const Scheduler::Heads &heads, uint32_t queue) {
  return heads[queue] != 0 && !is_strict(settings, queue);
}

uint64_t total_weight(const QosPort &settings, const Scheduler::Heads &heads) {
  uint64_t total = 0;
  for (uint32_t queue = 0; queue < kQueues; ++queue)
    if (competes(settings, heads, queue)) total += settings.weights[queue];
  return total;
}

}  // namespace

void Scheduler::begin(uint32_t queue) {
  start_[queue] = std::max(start_[queue], virtual_time_);
}

// Of the queues whose turn has begun, the one whose turn ends first; of equals
// the highest.
uint32_t Scheduler::pick(const QosPort &settings, const Heads &heads) const {
  for (uint32_t queue = kQueues; queue-- > 0;)
    if (heads[queue] != 0 && is_strict(settings, queue)) return queue;
  uint64_t now = UINT64_MAX;
  for (uint32_t queue = 0; queue < kQueues; ++queue)
    if (competes(settings, heads, queue)) now = std::min(now, start_[queue]);
  now = std::max(now, virtual_time_);
  uint32_t best = kQueues;
  uint64_t best_end = UINT64_MAX;
  for (uint32_t queue = kQueues; queue-- > 0;) {
    if (!competes(settings, heads, queue) || start_[queue] > now) continue;
    const uint64_t end = start_[queue] + cost_of(settings, heads[queue]) / settings.weights[queue];
    if (end < best_end) {
      best_end = end;
      best = queue;
    }
  }
  return best;
}

void Scheduler::sent(const QosPort &settings, const Heads &heads, uint32_t queue) {
  if (is_strict(settings, queue)) return;
  const uint64_t cost = cost_of(settings, heads[queue]);
  uint64_t first = UINT64_MAX;
  for (uint32_t each = 0; each < kQueues; ++each)
    if (competes(settings, heads, each)) first = std::min(first, start_[each]);
  virtual_time_ = std::max(virtual_time_, first) + cost / total_weight(settings, heads);
  start_[queue] += cost / settings.weights[queue];
  if (virtual_time_ < kRebase) return;
  for (uint64_t &start : start_) start -= std::min(start, kRebase / 2);
  virtual_time_ -= kRebase / 2;
}

}  // namespace vchip
