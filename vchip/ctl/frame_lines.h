// SPDX-License-Identifier: MIT
// The words of the commands about frames.
#ifndef VCHIPCTL_FRAME_LINES_H
#define VCHIPCTL_FRAME_LINES_H

#include <functional>

#include "frame_commands.h"
#include "os/command_line.h"

namespace vchipctl {

struct FrameLines {
  FrameWords frame;
  PlayWords play;
  TrafficWords traffic;
};

// `run` becomes what the words ask for; `own_chip` whether it brings a chip of
// its own and needs no image.
void add_frame_commands(os::Command &app, FrameLines &lines, std::function<void()> &run,
                        bool &own_chip);

}  // namespace vchipctl

#endif
