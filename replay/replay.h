// SPDX-License-Identifier: MIT
// Makes recorded calls again and compares what they answer.
#ifndef SWCTL_REPLAY_REPLAY_H
#define SWCTL_REPLAY_REPLAY_H

#include <swctl-probe/probe.h>

#include <string>
#include <vector>

namespace swreplay {

// A recording whose calls can all be made.
struct Recording {
  std::string name;
  std::vector<swprobe::Call> calls;
  std::vector<uint64_t> lines;  // of the file, where each of the calls is
  std::string warning;          // that its end is missing; empty if it is whole
};

// "-" is standard input. Throws std::runtime_error naming file and line.
Recording read(const std::string &path);

// Why no call can be made at all; null while calls can be made or the platform
// does not tell.
const char *platform_fault();

struct Difference {
  std::string place;  // file:line
  swprobe::Call recorded;
  swprobe::Call answered;
};

struct Outcome {
  uint64_t replayed = 0;
  uint64_t made_up = 0;  // by a fault plan: they never reached the platform
  std::vector<Difference> differences;
};

// Makes the calls in turn and adds to the outcome; ends at the first whose
// answer differs, unless it is told to go on. False if it ended.
bool replay(const Recording &recording, bool keep_going, Outcome &outcome);

}  // namespace swreplay

#endif
