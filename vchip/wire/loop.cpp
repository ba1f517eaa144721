// SPDX-License-Identifier: MIT
#include "loop.h"

#include <sys/epoll.h>
#include <time.h>

#include "clock.h"
#include "fault.h"

namespace vchipd {
namespace {

constexpr uint64_t kLongest = 3600 * kNanosecondsPerSecond;
constexpr int kEventsAtATime = 64;

timespec timespec_of(uint64_t nanoseconds) {
  const uint64_t bounded = nanoseconds < kLongest ? nanoseconds : kLongest;
  return {static_cast<time_t>(bounded / kNanosecondsPerSecond),
          static_cast<long>(bounded % kNanosecondsPerSecond)};
}

void control(const os::Descriptor &epoll, int operation, int descriptor, uint32_t events) {
  epoll_event event = {};
  event.events = events;
  event.data.fd = descriptor;
  if (epoll_ctl(epoll.get(), operation, descriptor, &event) != 0) throw system_fault("epoll_ctl");
}

}  // namespace

Loop::Loop() : epoll_(epoll_create1(EPOLL_CLOEXEC)) {
  if (!epoll_) throw system_fault("epoll_create1");
}

void Loop::watch(int descriptor, uint32_t events, Handler handler) {
  control(epoll_, EPOLL_CTL_ADD, descriptor, events);
  handlers_[descriptor] = std::make_shared<Handler>(std::move(handler));
}

void Loop::change(int descriptor, uint32_t events) {
  control(epoll_, EPOLL_CTL_MOD, descriptor, events);
}

void Loop::forget(int descriptor) {
  if (handlers_.erase(descriptor) == 0) return;
  epoll_ctl(epoll_.get(), EPOLL_CTL_DEL, descriptor, nullptr);
}

// A handler may forget others, or itself: each is looked up when its turn comes,
// and kept while it runs.
void Loop::wait(uint64_t nanoseconds) {
  epoll_event events[kEventsAtATime];
  const timespec longest = timespec_of(nanoseconds);
  const int count = epoll_pwait2(epoll_.get(), events, kEventsAtATime, &longest, nullptr);
  if (count < 0 && errno != EINTR) throw system_fault("epoll_pwait2");
  for (int place = 0; place < count; ++place) {
    const auto found = handlers_.find(events[place].data.fd);
    if (found == handlers_.end()) continue;
    const std::shared_ptr<Handler> handler = found->second;
    (*handler)(events[place].events);
  }
}

}  // namespace vchipd
