// SPDX-License-Identifier: MIT
// Frames of any bytes into the virtual chip, and what has to hold afterwards.
#ifndef SWCTL_FUZZ_FRAMES_FRAMES_H
#define SWCTL_FUZZ_FRAMES_FRAMES_H

#include "support/input.h"

namespace swfuzz {

// A cable in every front port of unit 0.
void plug_cables();

// Sends one frame of the input: a byte for the port, two for the length, then
// its bytes. The frame's memory ends where the frame does. Also explains it, or
// transmits it, if the byte says so.
void send_frame(Input &input);

// Takes all that has left, and ends the process as a crash if a frame could not
// have been sent, or if what was received is not what became of it.
void take_frames();

// Ends the process as a crash if a word of the chip holds what no call could have
// left there.
void expect_possible();

}  // namespace swfuzz

#endif
