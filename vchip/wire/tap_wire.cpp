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
  TapWire(const std::string &name, int32_t port) : tap_("tap:" + name, name), port_(port) {}
  ~TapWire() override {
    if (loop_ != nullptr) loop_->forget(tap_.descriptor());
  }

  void start(Loop &loop, Socket &socket) override {
    loop_ = &loop;
    tap_.open();
    loop.watch(tap_.descriptor(), EPOLLIN, [this, &socket](uint32_t events) {
      if ((events & EPOLLERR) != 0) return lose(socket);
      socket.frames_came();
    });
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
  void links_are(uint32_t up) override {
    if (port_ != VCHIP_CPU_PORT) tap_.show_carrier((up >> port_ & 1u) != 0 || !tap_.is_up());
  }
  std::string note() const override { return gone_ ? kGoneNote : ""; }

 private:
  // The interface was removed. Its descriptor would be ready for ever.
  void lose(Socket &socket) {
    gone_ = true;
    loop_->forget(tap_.descriptor());
    socket.carrier_is(false);
  }

  Tap tap_;
  const int32_t port_;
  Loop *loop_ = nullptr;
  std::unique_ptr<LinkMonitor> monitor_;
  bool gone_ = false;
};

}  // namespace

std::unique_ptr<Wire> make_tap_wire(const std::string &rest, const Place &place) {
  expect_link_name("tap:" + rest, rest);
  return std::make_unique<TapWire>(rest, place.port);
}

}  // namespace vchipd
