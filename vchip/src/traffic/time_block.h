// SPDX-License-Identifier: MIT
// The time of a unit.
#ifndef VCHIP_TRAFFIC_TIME_BLOCK_H
#define VCHIP_TRAFFIC_TIME_BLOCK_H

#include <cstdint>

namespace vchip {

class Dump;
class Findings;

class TimeBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on() {}  // all zero
  void repair() {}    // single words, each valid on its own
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  // Nanoseconds since power-on. It does not move unless it is advanced.
  uint64_t clock() const { return clock_; }
  void set_clock(uint64_t nanoseconds) { clock_ = nanoseconds; }

 private:
  uint64_t clock_;
};

}  // namespace vchip

#endif
