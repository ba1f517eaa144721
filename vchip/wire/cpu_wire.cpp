// SPDX-License-Identifier: MIT
#include "cpu_wire.h"

#include <array>
#include <sys/epoll.h>

#include "fault.h"
#include "links.h"
#include "loop.h"
#include "tap.h"

namespace vchipd {
namespace {

class CpuWire : public Wire {
 public:
  explicit CpuWire(const std::string &prefix) {
    for (int32_t port = 0; port < VCHIP_PORTS; ++port)
      taps_[static_cast<size_t>(port)] =
          std::make_unique<Tap>("cpu:" + prefix, prefix + port_name(port));
  }
  ~CpuWire() override {
    if (loop_ == nullptr) return;
    for (const auto &tap : taps_) loop_->forget(tap->descriptor());
  }

  void start(Loop &loop, Socket &socket) override;
  bool receive(Arrivals &arrivals, uint32_t most) override;
  int32_t deliver(uint32_t unit, int32_t port, Arrivals &arrivals) override;
  void send(const vchip_frame_t *frames, uint32_t count) override;
  void links_are(uint32_t up) override;
  std::string note() const override { return gone_ ? "an interface is gone" : ""; }

 private:
  void came(size_t port, uint32_t events, Socket &socket);

  std::array<std::unique_ptr<Tap>, VCHIP_PORTS> taps_;
  Loop *loop_ = nullptr;
  uint32_t ready_ = 0;  // a bit for each tap that may have frames
  int32_t turn_ = 0;    // the tap that is looked at next
  bool gone_ = false;   // somebody has removed one of the interfaces
};

// The descriptor of an interface that was removed would be ready for ever.
void CpuWire::came(size_t port, uint32_t events, Socket &socket) {
  if ((events & EPOLLERR) != 0) {
    gone_ = true;
    return loop_->forget(taps_[port]->descriptor());
  }
  ready_ |= 1u << port;
  socket.frames_came();
}

void CpuWire::start(Loop &loop, Socket &socket) {
  for (const auto &tap : taps_) tap->open();
  loop_ = &loop;
  for (size_t port = 0; port < taps_.size(); ++port)
    loop.watch(taps_[port]->descriptor(), EPOLLIN,
               [this, port, &socket](uint32_t events) { came(port, events, socket); });
  socket.carrier_is(true);
}

// One tap at a time, each in its turn.
bool CpuWire::receive(Arrivals &arrivals, uint32_t most) {
  for (int32_t looked = 0; looked < VCHIP_PORTS && arrivals.empty(); ++looked) {
    const int32_t port = turn_;
    turn_ = (turn_ + 1) % VCHIP_PORTS;
    if ((ready_ >> port & 1u) == 0) continue;
    if (!taps_[static_cast<size_t>(port)]->receive(arrivals, most, counts_))
      ready_ &= ~(1u << port);
    for (vchip_arrival_t &arrival : arrivals) arrival.port = port;
  }
  return ready_ != 0;
}

int32_t CpuWire::deliver(uint32_t unit, int32_t, Arrivals &arrivals) {
  if (arrivals.front().port == VCHIP_CPU_PORT)
    return vchip_frames_arrive(unit, arrivals.data(), static_cast<uint32_t>(arrivals.size()));
  int32_t result = 0;
  for (const vchip_arrival_t &frame : arrivals)
    result = vchip_frame_transmit(unit, frame.port, frame.bytes, frame.length);
  return result;
}

void CpuWire::send(const vchip_frame_t *frames, uint32_t count) {
  for (uint32_t place = 0; place < count; ++place) {
    const bool is_forwarded = frames[place].reason == VCHIP_TO_CPU_FORWARDED;
    const int32_t port = is_forwarded ? VCHIP_CPU_PORT : frames[place].port_in;
    taps_[static_cast<size_t>(port)]->send(&frames[place], 1, counts_);
  }
}

void CpuWire::links_are(uint32_t up) {
  for (int32_t port = 0; port < VCHIP_CPU_PORT; ++port)
    taps_[static_cast<size_t>(port)]->show_carrier((up >> port & 1u) != 0);
}

}  // namespace

std::unique_ptr<Wire> make_cpu_wire(const std::string &rest, const Place &place) {
  const std::string prefix = rest.empty() ? "cpu" : rest;
  if (place.port != VCHIP_CPU_PORT)
    throw WrongWords("cpu:" + rest + ": the processor's side is at port 0 alone");
  expect_link_name("cpu:" + rest, prefix + "p27");
  return std::make_unique<CpuWire>(prefix);
}

}  // namespace vchipd
