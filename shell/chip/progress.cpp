// SPDX-License-Identifier: MIT
#include "chip/progress.h"

#include <cstdio>
#include <unistd.h>
#include <utility>

namespace swsh {
namespace {

constexpr std::chrono::milliseconds kPatience(1000);
constexpr std::chrono::milliseconds kBetween(200);
// Asking for the time at every step would cost more than the step.
constexpr size_t kLookEvery = 64;

}  // namespace

Progress::Progress(std::string what)
    : what_(std::move(what)),
      wanted_(isatty(STDERR_FILENO) != 0),
      next_(Clock::now() + kPatience) {}

Progress::~Progress() {
  if (shown_) fputs("\r\x1b[K", stderr);
}

void Progress::step() {
  ++steps_;
  if (!wanted_ || steps_ % kLookEvery != 0 || Clock::now() < next_) return;
  fprintf(stderr, "\r%s: %zu", what_.c_str(), steps_);
  fflush(stderr);
  shown_ = true;
  next_ = Clock::now() + kBetween;
}

}  // namespace swsh
