// SPDX-License-Identifier: MIT
// The functions of <swctl-vchip/frame.h>: each is one locked step.
#include <swctl-vchip/frame.h>

#include <algorithm>
#include <bit>

#include "chip/chip.h"
#include "common/check.h"
#include "pipeline/carried.h"
#include "pipeline/losses.h"
#include "pipeline/run.h"

namespace vchip {
namespace {

int32_t on_length(uint32_t length) {
  return length >= VCHIP_FRAME_MIN && length <= VCHIP_FRAME_MAX ? 0 : VCHIP_E_VALUE;
}

int32_t first_fault(std::initializer_list<int32_t> checks) {
  for (const int32_t check : checks)
    if (check != 0) return check;
  return 0;
}

// Runs step(run) for frames of a unit.
template <typename Step>
int32_t carry(uint32_t unit, std::initializer_list<int32_t> checks, Step step) {
  Locked chip;
  if (!chip) return chip.fault();
  if (unit >= VCHIP_UNITS) return VCHIP_E_UNIT;
  if (const int32_t fault = first_fault(checks); fault != 0) return fault;
  Writing mark(chip.state(), kSwitching);
  Run run(chip.state(), unit, carried(unit), loss_listener(unit));
  return step(run);
}

// Whether the frames that have left are all that this process has: then taking
// them does not need the chip.
bool nothing_waits(uint32_t unit) {
  return unit < VCHIP_UNITS && carried(unit).waiting_ports == 0;
}

int32_t fault_of(const vchip_arrival_t &frame) {
  return first_fault({on_port(frame.port), not_null(frame.bytes), on_length(frame.length)});
}

int32_t fault_of(const vchip_arrival_t *frames, uint32_t count) {
  if (count != 0 && frames == nullptr) return VCHIP_E_NULL;
  for (uint32_t place = 0; place < count; ++place)
    if (const int32_t fault = fault_of(frames[place]); fault != 0) return fault;
  return 0;
}

bool is_room(const vchip_frame_t &frame) {
  return frame.bytes != nullptr || frame.room == 0;
}

// 1, or VCHIP_E_VALUE for too little room.
int32_t take(FrameRing &left, int32_t port, vchip_frame_t &frame) {
  const FrameNote &note = left.front();
  frame.length = note.length;
  if (frame.room < note.length) return VCHIP_E_VALUE;
  memcpy(frame.bytes, left.front_bytes(), note.length);
  frame.port_in = note.port_in;
  frame.reason = port == VCHIP_CPU_PORT ? note.reason : 0;
  frame.time = note.time;
  left.pop();
  return 1;
}

int32_t take_all(UnitTraffic &traffic, int32_t port, vchip_frame_t *frames, uint32_t count) {
  FrameRing &left = traffic.ports[static_cast<size_t>(port)].left;
  int32_t taken = 0;
  while (static_cast<uint32_t>(taken) < count && !left.empty()) {
    const int32_t result = take(left, port, frames[taken]);
    if (result < 0) return taken > 0 ? taken : result;
    ++taken;
  }
  if (left.empty()) traffic.left_ports &= ~port_bit(port);
  return taken;
}

int32_t rooms(const vchip_frame_t *frames, uint32_t count) {
  if (count != 0 && frames == nullptr) return VCHIP_E_NULL;
  const bool all = std::all_of(frames, frames + count, is_room);
  return all ? 0 : VCHIP_E_NULL;
}

// The rest of a frame is read when it is taken; it may be in another processor's cache.
void fetch_rest(const vchip_arrival_t &frame) {
  constexpr uint32_t kLine = 64;
  for (uint32_t at = kLine; at < frame.length; at += kLine) __builtin_prefetch(frame.bytes + at);
}

// Looks ahead, so that the memory of a frame is there when its turn comes.
void arrive_all(Run &run, const vchip_arrival_t *frames, uint32_t count, bool lent) {
  constexpr uint32_t kFar = 8;
  constexpr uint32_t kNear = 4;
  for (uint32_t place = 0; place < count; ++place) {
    if (place + kFar < count) __builtin_prefetch(frames[place + kFar].bytes);
    if (place + kNear < count) {
      const vchip_arrival_t &next = frames[place + kNear];
      run.expect(next.port, next.bytes, next.length);
      if (lent) fetch_rest(next);
    }
    run.arrive(frames[place].port, frames[place].bytes, frames[place].length, lent);
  }
}

int32_t arrive_all(uint32_t unit, const vchip_arrival_t *frames, uint32_t count, bool lent) {
  return carry(unit, {fault_of(frames, count)}, [&](Run &run) {
    arrive_all(run, frames, count, lent);
    return 0;
  });
}

constexpr const char *kReasons[] = {"bpdu",        "lldp",        "eapol", "lacp",
                                    "oam",         "reserved",    "igmp",  "mld",
                                    "own-address", "new-address", "rule",  "lookup-miss"};

}  // namespace
}  // namespace vchip

const char *vchip_to_cpu_name(uint32_t reason) {
  return reason >= 1 && reason <= std::size(vchip::kReasons) ? vchip::kReasons[reason - 1]
                                                             : nullptr;
}

int32_t vchip_frame_arrive(uint32_t unit, int32_t port, const uint8_t *bytes, uint32_t length) {
  const vchip_arrival_t frame = {bytes, length, port};
  return vchip::carry(unit, {vchip::fault_of(frame)}, [&](vchip::Run &run) {
    run.arrive(port, bytes, length);
    return 0;
  });
}

int32_t vchip_frames_arrive(uint32_t unit, const vchip_arrival_t *frames, uint32_t count) {
  return vchip::arrive_all(unit, frames, count, false);
}

int32_t vchip_frames_arrive_lent(uint32_t unit, const vchip_arrival_t *frames, uint32_t count) {
  return vchip::arrive_all(unit, frames, count, true);
}

void vchip_frames_keep(uint32_t unit) {
  const vchip::LockedProcess own;
  if (!own || unit >= VCHIP_UNITS) return;
  vchip::UnitTraffic &traffic = vchip::carried(unit);
  for (uint32_t rest = traffic.left_ports; rest != 0; rest &= rest - 1)
    traffic.ports[static_cast<size_t>(std::countr_zero(rest))].left.keep();
}

int32_t vchip_frame_transmit(uint32_t unit, int32_t port, const uint8_t *bytes, uint32_t length) {
  return vchip::carry(
      unit, {vchip::on_front_port(port), vchip::not_null(bytes), vchip::on_length(length)},
      [&](vchip::Run &run) {
        run.transmit(port, bytes, length);
        return 0;
      });
}

int32_t vchip_frame_leave(uint32_t unit, int32_t port, vchip_frame_t *frame) {
  return vchip_frames_leave(unit, port, frame, 1);
}

int32_t vchip_frames_leave(uint32_t unit, int32_t port, vchip_frame_t *frames, uint32_t count) {
  {
    const int32_t fault = vchip::first_fault({vchip::on_port(port), vchip::rooms(frames, count)});
    const vchip::LockedProcess own;
    if (own && fault == 0 && vchip::nothing_waits(unit))
      return vchip::take_all(vchip::carried(unit), port, frames, count);
  }
  return vchip::carry(unit, {vchip::on_port(port), vchip::rooms(frames, count)}, [&](vchip::Run &) {
    return vchip::take_all(vchip::carried(unit), port, frames, count);
  });
}

uint32_t vchip_frames_ready(uint32_t unit) {
  uint32_t ports = 0;
  {
    const vchip::LockedProcess own;
    if (own && vchip::nothing_waits(unit)) return vchip::carried(unit).left_ports;
  }
  vchip::carry(unit, {}, [&](vchip::Run &) {
    ports = vchip::carried(unit).left_ports;
    return 0;
  });
  return ports;
}

int32_t vchip_clock_advance(uint64_t nanoseconds) {
  vchip::Locked chip;
  if (!chip) return chip.fault();
  const uint64_t clock = chip.state().units[0].time.clock();
  if (nanoseconds > UINT64_MAX - clock) return VCHIP_E_VALUE;
  vchip::Writing mark(chip.state(), vchip::kSwitching);
  for (uint32_t unit = 0; unit < VCHIP_UNITS; ++unit)
    vchip::Run(chip.state(), unit, vchip::carried(unit)).advance(clock + nanoseconds);
  return 0;
}

uint64_t vchip_clock(void) {
  vchip::Locked chip;
  return chip ? chip.state().units[0].time.clock() : 0;
}

uint64_t vchip_clock_next(void) {
  uint64_t next = vchip::kNever;
  for (uint32_t unit = 0; unit < VCHIP_UNITS; ++unit)
    vchip::carry(unit, {}, [&](vchip::Run &run) {
      next = std::min(next, run.next_departure());
      return 0;
    });
  return next;
}

int32_t vchip_drops_get(uint32_t unit, int32_t port, vchip_drops_t *drops) {
  static_assert(sizeof *drops == sizeof(vchip::DropBlock::Counts));
  return vchip::look(unit, {vchip::on_port(port), vchip::not_null(drops)},
                     [=](const vchip::Unit &chip) {
                       memcpy(drops, chip.drops.port(port).data(), sizeof *drops);
                       return 0;
                     });
}

int32_t vchip_drops_clear(uint32_t unit, int32_t port) {
  return vchip::change(unit, {vchip::on_port(port)}, [=](vchip::Unit &chip) {
    chip.drops.clear(port);
    chip.queue.clear(port);
  });
}
