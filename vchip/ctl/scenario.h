// SPDX-License-Identifier: MIT
// A scenario: a folder with settings, frames that go in, and those that have
// to come out.
//
//     about       a sentence
//     config      lines for swctl, before the first frame
//     in/3.pcap   frames that arrive at interface 3; 0 is the CPU
//     out/4.pcap  frames that leave interface 4; no file: none
//     until       nanoseconds to which the clock runs at the end, if needed
//
// Stamps are the chip's clock, 0 at power-on.
#ifndef VCHIPCTL_SCENARIO_H
#define VCHIPCTL_SCENARIO_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "capture.h"
#include "departures.h"

namespace vchipctl {

struct Scenario {
  std::string directory;
  std::string about;
  std::string config;                                 // a file
  std::map<int32_t, std::vector<CapturedFrame>> in;   // by chip port
  std::map<int32_t, std::vector<CapturedFrame>> out;  // by chip port
  uint64_t until = 0;
};

// Throws Refused for a folder that is no scenario.
Scenario load_scenario(const std::string &directory);

// Configures the chip that the environment names, with all cables in, and sends
// the frames: those of one time by rising interface. What left comes back.
std::vector<Departure> run_scenario(const Scenario &scenario);

// A frame that was not as expected. One of the two may be missing.
struct Difference {
  int32_t port;
  size_t number;  // among those of the port, from 1
  const CapturedFrame *expected;
  const Departure *got;
};
// By port. They point into what is given.
std::vector<Difference> differences(const Scenario &scenario,
                                    const std::vector<Departure> &departures);

}  // namespace vchipctl

#endif
