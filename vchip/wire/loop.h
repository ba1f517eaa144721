// SPDX-License-Identifier: MIT
// Waits for descriptors and for a time, and costs nothing until then.
#ifndef VCHIPD_LOOP_H
#define VCHIPD_LOOP_H

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

#include "os/descriptor.h"

namespace vchipd {

class Loop {
 public:
  using Handler = std::function<void(uint32_t events)>;

  Loop();
  // Calls the handler while the descriptor has one of the events (EPOLLIN...).
  void watch(int descriptor, uint32_t events, Handler handler);
  void change(int descriptor, uint32_t events);
  // Before it is closed.
  void forget(int descriptor);
  // Calls the handlers of what is there, or of what comes in that time.
  void wait(uint64_t nanoseconds);

 private:
  os::Descriptor epoll_;
  std::map<int, std::shared_ptr<Handler>> handlers_;
};

}  // namespace vchipd

#endif
