// SPDX-License-Identifier: MIT
#include "image/patience.h"

#include <algorithm>
#include <time.h>

namespace vchip {
namespace {

constexpr uint64_t kBetweenLooks = 100'000'000;  // ns

}  // namespace

uint64_t monotonic_time() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<uint64_t>(now.tv_sec) * 1'000'000'000 + static_cast<uint64_t>(now.tv_nsec);
}

uint64_t Patience::next_look() {
  now_ = monotonic_time();
  if (start_ == 0) {
    start_ = now_;
    limit_ = ask_();
  }
  const uint64_t left = exhausted() ? 0 : limit_ - waited();
  return now_ + std::min(left, kBetweenLooks);
}

}  // namespace vchip
