// SPDX-License-Identifier: MIT
// What moves the chip's clock.
#ifndef VCHIPD_CLOCK_H
#define VCHIPD_CLOCK_H

#include <cstdint>

namespace vchipd {

inline constexpr uint64_t kNanosecondsPerSecond = 1'000'000'000;

// The system's monotonic clock in nanoseconds.
uint64_t monotonic_now();

class Clock {
 public:
  // A virtual one moves only when it is told to.
  explicit Clock(bool is_virtual);

  bool is_virtual() const { return virtual_; }
  // The chip's clock as this process has left it.
  uint64_t now() const { return chip_; }
  // Brings the chip's clock to the present.
  void follow();
  void advance_to(uint64_t time);
  // Whether the chip has been reset since it was asked last, which another process may
  // do.
  bool was_reset();

 private:
  const bool virtual_;
  uint64_t real_;
  uint64_t chip_;
};

}  // namespace vchipd

#endif
