// SPDX-License-Identifier: MIT
// What vchipctl does with frames. All throw UsageError or Refused, both before
// anything is changed by wrong words or by a bad capture.
#ifndef VCHIPCTL_FRAME_COMMANDS_H
#define VCHIPCTL_FRAME_COMMANDS_H

#include <optional>
#include <string>
#include <vector>

namespace vchipctl {

struct FrameWords {
  std::string unit = "0";
  std::string port;
  std::vector<std::string> frames;
  std::optional<std::string> capture;
  std::optional<std::string> filter;
  bool drain = false;
  bool json = false;
};

struct PlayWords {
  std::vector<std::string> directories;
  bool json = false;
};

struct TrafficWords {
  std::string unit = "0";
  std::vector<std::string> words;  // a command and ports, both optional
  bool all = false;
  bool json = false;
};

void send(const FrameWords &words);
void explain(const FrameWords &words);
void play(const PlayWords &words);
void drops(const TrafficWords &words);
void queues(const TrafficWords &words);

}  // namespace vchipctl

#endif
