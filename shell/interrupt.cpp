// SPDX-License-Identifier: MIT
#include "interrupt.h"

#include <cerrno>
#include <cstdint>
#include <ctime>
#include <poll.h>

namespace swsh {
namespace {

constexpr int64_t kNanoseconds = 1000000000;

volatile sig_atomic_t marked = 0;
timespec marked_at = {};  // of the handler alone

bool is_within_a_second(const timespec &now) {
  const long passed = now.tv_nsec - marked_at.tv_nsec;
  return now.tv_sec - marked_at.tv_sec <= (passed < 0 ? 1 : 0);
}

void on_interrupt(int signal) {
  const int error = errno;
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  if (marked != 0 && is_within_a_second(now)) {
    ::signal(signal, SIG_DFL);
    raise(signal);
  }
  marked_at = now;
  marked = 1;
  errno = error;
}

}  // namespace

// Without SA_RESTART, so that what waits is woken.
Interrupts::Interrupts() {
  struct sigaction action = {};
  action.sa_handler = on_interrupt;
  sigaction(SIGINT, &action, &before_);
}

Interrupts::~Interrupts() {
  sigaction(SIGINT, &before_, nullptr);
}

bool is_interrupted() {
  return marked != 0;
}

bool take_interrupt() {
  const bool interrupted = marked != 0;
  marked = 0;
  return interrupted;
}

Fault interrupted() {
  Fault fault;
  fault.status = kRefused;
  fault.message = "interrupted";
  return fault;
}

void stop_if_interrupted() {
  if (take_interrupt()) throw CommandError(interrupted());
}

bool wait_for(std::chrono::milliseconds time) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + time;
  for (;;) {
    const BlockedSignals blocked({SIGINT});
    const auto rest = std::chrono::nanoseconds(end - Clock::now()).count();
    if (is_interrupted() || rest <= 0) break;
    const timespec left = {static_cast<time_t>(rest / kNanoseconds),
                           static_cast<long>(rest % kNanoseconds)};
    ppoll(nullptr, 0, &left, blocked.before());
  }
  return !take_interrupt();
}

BlockedSignals::BlockedSignals(std::initializer_list<int> signals) {
  sigset_t blocked;
  sigemptyset(&blocked);
  for (const int signal : signals) sigaddset(&blocked, signal);
  sigprocmask(SIG_BLOCK, &blocked, &before_);
}

BlockedSignals::~BlockedSignals() {
  sigprocmask(SIG_SETMASK, &before_, nullptr);
}

}  // namespace swsh
