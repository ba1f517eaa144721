// SPDX-License-Identifier: MIT
// vchipctl capture: the frames at the ports of a running vchipd.
#ifndef VCHIPCTL_CAPTURE_COMMAND_H
#define VCHIPCTL_CAPTURE_COMMAND_H

#include <functional>
#include <string>

#include "os/command_line.h"

namespace vchipctl {

struct CaptureWords {
  std::string unit = "0";
  std::string ports;
  std::string filter;
  std::string file;
  std::string count = "0";
  bool drops = false;
};

// Until it is interrupted, its reader closes, or it has as many frames as asked for.
// Throws UsageError and Refused.
void capture(const CaptureWords &words);

void add_capture_command(os::Command &app, CaptureWords &words, std::function<void()> &run);

}  // namespace vchipctl

#endif
