// SPDX-License-Identifier: MIT
#include "departures.h"

#include <swctl-vchip/frame.h>

#include <algorithm>
#include <tuple>

#include "port_names.h"
#include "usage_error.h"

namespace vchipctl {
namespace {

// Takes the oldest frame of a port; false for none.
bool take(uint32_t unit, int32_t port, Departure &departure) {
  departure.bytes.resize(VCHIP_FRAME_MAX + 2 * 4);  // a port may add tags
  vchip_frame_t frame = {};
  frame.bytes = departure.bytes.data();
  frame.room = static_cast<uint32_t>(departure.bytes.size());
  const int32_t result = vchip_frame_leave(unit, port, &frame);
  if (result < 0) throw Refused(vchip_result_text(result));
  departure.bytes.resize(result == 1 ? frame.length : 0);
  departure.port = port;
  departure.time = frame.time;
  departure.reason = frame.reason;
  return result == 1;
}

bool leaves_before(const Departure &first, const Departure &second) {
  return std::make_tuple(first.time, port_rank(first.port)) <
         std::make_tuple(second.time, port_rank(second.port));
}

}  // namespace

void arrive(uint32_t unit, int32_t port, const std::vector<uint8_t> &bytes) {
  expect_done(vchip_frame_arrive(unit, port, bytes.data(), static_cast<uint32_t>(bytes.size())));
}

void advance_to(uint64_t time) {
  const uint64_t clock = vchip_clock();
  if (time > clock) expect_done(vchip_clock_advance(time - clock));
}

void take_departures(uint32_t unit, std::vector<Departure> &departures) {
  const auto taken = static_cast<std::ptrdiff_t>(departures.size());
  const uint32_t ready = vchip_frames_ready(unit);
  Departure departure = {};
  for (const int32_t port : ports_by_name())
    while ((ready >> port & 1) != 0 && take(unit, port, departure)) departures.push_back(departure);
  std::stable_sort(departures.begin() + taken, departures.end(), leaves_before);
}

}  // namespace vchipctl
