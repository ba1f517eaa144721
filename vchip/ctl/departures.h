// SPDX-License-Identifier: MIT
// Frames in and out of the chip, as this process sends them.
#ifndef VCHIPCTL_DEPARTURES_H
#define VCHIPCTL_DEPARTURES_H

#include <cstdint>
#include <vector>

namespace vchipctl {

struct Departure {
  int32_t port;     // chip port that it left by
  uint64_t time;    // the chip's clock then
  uint32_t reason;  // on the CPU port, VCHIP_TO_CPU_*
  std::vector<uint8_t> bytes;
};

// Throws Refused.
void arrive(uint32_t unit, int32_t port, const std::vector<uint8_t> &bytes);

// Advances the chip's clock to a time; one that has passed changes nothing.
void advance_to(uint64_t time);

// Appends what has left since the last call, by time and at one time by port.
void take_departures(uint32_t unit, std::vector<Departure> &departures);

}  // namespace vchipctl

#endif
