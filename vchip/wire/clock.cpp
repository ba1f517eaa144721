// SPDX-License-Identifier: MIT
#include "clock.h"

#include <swctl-vchip/frame.h>

#include <time.h>

namespace vchipd {

uint64_t monotonic_now() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<uint64_t>(now.tv_sec) * kNanosecondsPerSecond +
         static_cast<uint64_t>(now.tv_nsec);
}

Clock::Clock(bool is_virtual)
    : virtual_(is_virtual), real_(monotonic_now()), chip_(vchip_clock()) {}

void Clock::follow() {
  if (virtual_) return;
  const uint64_t real = monotonic_now();
  if (vchip_clock_advance(real - real_) != 0) return;
  chip_ += real - real_;
  real_ = real;
}

bool Clock::was_reset() {
  const uint64_t before = chip_;
  chip_ = vchip_clock();
  return chip_ < before;
}

void Clock::advance_to(uint64_t time) {
  if (time > chip_ && vchip_clock_advance(time - chip_) == 0) chip_ = time;
}

}  // namespace vchipd
