// SPDX-License-Identifier: MIT
// How long a call waits for a lock.
#ifndef VCHIP_IMAGE_PATIENCE_H
#define VCHIP_IMAGE_PATIENCE_H

#include <cstdint>
#include <utility>

namespace vchip {

// Nanoseconds of the monotonic clock.
uint64_t monotonic_time();

// One call's waiting, for as many locks as it takes one after the other. The
// clock starts when it first has to wait, and only then the limit is asked for.
class Patience {
 public:
  static constexpr uint64_t kForever = UINT64_MAX;
  static uint64_t forever() { return kForever; }

  // `limit` answers how many nanoseconds the call waits at most.
  explicit Patience(uint64_t (*limit)()) : ask_(limit) {}

  // For somebody who begins to wait, or goes on: when to look up next.
  uint64_t next_look();
  // As of the last look.
  uint64_t waited() const { return now_ - start_; }
  bool exhausted() const { return waited() >= limit_; }
  // Whether the user is to be told for whom the call waits: once.
  bool tell() { return !std::exchange(told_, true); }

 private:
  uint64_t (*ask_)();
  uint64_t limit_ = kForever;
  uint64_t start_ = 0;
  uint64_t now_ = 0;
  bool told_ = false;
};

}  // namespace vchip

#endif
