// SPDX-License-Identifier: MIT
#include "tap_wire.h"

#include <fcntl.h>
#include <linux/if.h>
#include <linux/if_tun.h>
#include <sys/epoll.h>
#include <sys/ioctl.h>

#include "fault.h"
#include "links.h"
#include "loop.h"
#include "tap.h"

namespace vchipd {
namespace {

class TapWire : public Wire {
 public:
  explicit TapWire(std::string name) : tap_("tap:" + name, name) {}
  ~TapWire() override {
    if (loop_ != nullptr) loop_->forget(tap_.descriptor());
  }

  void start(Loop &loop, Socket &socket) override {
    loop_ = &loop;
    tap_.open();
    loop.watch(tap_.descriptor(), EPOLLIN, [&socket](uint32_t) { socket.frames_came(); });
    monitor_ = std::make_unique<LinkMonitor>(loop, tap_.index(), [&socket](uint32_t flags) {
      socket.carrier_is((flags & IFF_UP) != 0);
    });
    socket.carrier_is(tap_.is_up());
  }
  bool receive(Arrivals &arrivals, uint32_t most) override {
    return tap_.receive(arrivals, most, counts_);
  }
  void send(const vchip_frame_t *frames, uint32_t count) override {
    tap_.send(frames, count, counts_);
  }
  void link_is(bool up) override { tap_.show_carrier(up); }

 private:
  Tap tap_;
  Loop *loop_ = nullptr;
  std::unique_ptr<LinkMonitor> monitor_;
};

}  // namespace

std::unique_ptr<Wire> make_tap_wire(const std::string &rest, const Place &) {
  expect_link_name("tap:" + rest, rest);
  return std::make_unique<TapWire>(rest);
}

}  // namespace vchipd
