// SPDX-License-Identifier: MIT
#include "frames/frames.h"

#include <swctl-vchip/ability.h>
#include <swctl-vchip/explain.h>
#include <swctl-vchip/frame.h>
#include <swctl-vchip/image.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "support/stage.h"

namespace swfuzz {
namespace {

constexpr uint32_t kLongest = VCHIP_FRAME_MAX + 8;  // two tags more than came

void take_from(int32_t port) {
  static std::vector<uint8_t> room(kLongest);
  vchip_frame_t frame = {room.data(), kLongest, 0, 0, 0, 0};
  int32_t result = vchip_frame_leave(0, port, &frame);
  for (; result == 1; result = vchip_frame_leave(0, port, &frame)) {
    if (frame.length < 60 || frame.length > kLongest) wrong("a frame of no possible length left");
    if (frame.port_in < 0 || frame.port_in > VCHIP_CPU_PORT) wrong("a frame came from nowhere");
    if (frame.time > vchip_clock()) wrong("a frame left later than now");
  }
  if (result != 0) wrong("taking a frame answers " + std::to_string(result));
}

void check_account(int32_t port) {
  vchip_drops_t all = {};
  if (vchip_drops_get(0, port, &all) != 0) wrong("there is no account");
  const uint64_t ended = all.forwarded + all.taken + all.attack + all.ingress_rate + all.vlan +
                         all.filter + all.trap + all.state + all.learn + all.rule + all.lookup +
                         all.storm + all.egress;
  if (all.received != ended) wrong("received is not what became of it");
}

}  // namespace

void plug_cables() {
  const vchip_partner_t partner = {1, VCHIP_ABILITY_USUAL};
  for (int32_t port = 0; port < VCHIP_CPU_PORT; ++port) vchip_cable_plug(0, port, &partner);
}

void send_frame(Input &input) {
  constexpr uint8_t kPorts = VCHIP_PORTS + 1;  // one that there is not, too
  const uint8_t how = input.byte();
  const auto port = static_cast<int32_t>(how % kPorts);
  const size_t length = std::min<size_t>(input.half_word(), input.left());
  // Of its own size, so that a byte past the end is found.
  const std::unique_ptr<uint8_t[]> bytes(new uint8_t[length]);
  input.fill(bytes.get(), length);
  const auto size = static_cast<uint32_t>(length);
  if (how >= 8 * kPorts) vchip_frame_transmit(0, port, bytes.get(), size);
  const bool good = port < VCHIP_PORTS && size >= VCHIP_FRAME_MIN && size <= VCHIP_FRAME_MAX;
  // Seldom, for it works on a copy of the unit.
  if (how % 64 == 63 && good) vchip::explain(0, port, bytes.get(), size);
  const int32_t result = vchip_frame_arrive(0, port, bytes.get(), size);
  if ((result == 0) != good) wrong("a frame's arrival answers " + std::to_string(result));
}

void take_frames() {
  for (uint32_t ready = vchip_frames_ready(0); ready != 0; ready &= ready - 1)
    take_from(__builtin_ctz(ready));
  for (int32_t port = 0; port < VCHIP_PORTS; ++port) check_account(port);
}

void expect_possible() {
  for (const vchip::Fault &fault : vchip::chip_faults())
    wrong(fault.block + " " + fault.word + ": " + fault.text);
}

}  // namespace swfuzz
