// SPDX-License-Identifier: MIT
#ifndef VCHIPCTL_GIVEN_FRAMES_H
#define VCHIPCTL_GIVEN_FRAMES_H

#include <vector>

#include "capture.h"
#include "frame_commands.h"

namespace vchipctl {

// The frames that a command is given, as words or as a capture. Those of words
// all have the time 0.
std::vector<CapturedFrame> given_frames(const FrameWords &words);

}  // namespace vchipctl

#endif
