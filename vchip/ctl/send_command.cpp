// SPDX-License-Identifier: MIT
#include <swctl-vchip/frame.h>

#include <cstdio>

#include "departures.h"
#include "frame_commands.h"
#include "frame_words.h"
#include "given_frames.h"
#include "os/json.h"
#include "port_names.h"
#include "usage_error.h"
#include "words.h"

namespace vchipctl {
namespace {

using os::Json;

void print_departure(const Departure &frame) {
  const char *reason = vchip_to_cpu_name(frame.reason);
  printf("%s %s%s%s\n", port_name(frame.port).c_str(), hex(frame.bytes).c_str(),
         reason != nullptr ? " " : "", reason != nullptr ? reason : "");
}

Json sent_json(const Departure &frame) {
  const char *reason = vchip_to_cpu_name(frame.reason);
  return {{"port", port_json(frame.port)},
          {"bytes", hex(frame.bytes)},
          {"reason", reason != nullptr ? Json(reason) : Json()}};
}

void print_sent(const std::vector<Departure> &departures) {
  Json document = {{"frames", Json::array()}};
  for (const Departure &frame : departures) document["frames"].push_back(sent_json(frame));
  printf("%s\n", os::json_text(document).c_str());
}

// Between two frames passes the time between their stamps. The first arrives
// at the chip's present time, for stamps of a capture count from 1970.
std::vector<Departure> send_all(uint32_t unit, int32_t port,
                                const std::vector<CapturedFrame> &frames) {
  std::vector<Departure> departures;
  const uint64_t begin = vchip_clock();
  for (const CapturedFrame &frame : frames) {
    const uint64_t first = frames.front().time;
    if (frame.time > first) advance_to(begin + (frame.time - first));
    take_departures(unit, departures);
    arrive(unit, port, frame.bytes);
  }
  take_departures(unit, departures);
  return departures;
}

// Lets the clock run until nothing waits that will leave.
void drain(uint32_t unit, std::vector<Departure> &departures) {
  for (uint64_t next; (next = vchip_clock_next()) != UINT64_MAX;) {
    advance_to(next);
    take_departures(unit, departures);
  }
}

// Frames on their way belong to this process and end with it.
void warn_of_waiting() {
  if (vchip_clock_next() == UINT64_MAX) return;
  fprintf(stderr,
          "vchipctl: frames still wait in queues and are lost with this command; --drain lets the "
          "clock run until they have left\n");
}

}  // namespace

void send(const FrameWords &words) {
  const uint32_t unit = parse_unit(words.unit);
  const int32_t port = parse_one_port(words.port);
  const std::vector<CapturedFrame> frames = given_frames(words);
  std::vector<Departure> departures = send_all(unit, port, frames);
  if (words.drain) drain(unit, departures);
  if (words.json) {
    print_sent(departures);
  } else {
    for (const Departure &frame : departures) print_departure(frame);
  }
  warn_of_waiting();
}

}  // namespace vchipctl
