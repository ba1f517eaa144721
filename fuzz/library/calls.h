// SPDX-License-Identifier: MIT
// Every exported function but those of the kernel channel, and what happens
// to the chip from outside, in any order and with any arguments.
#ifndef SWCTL_FUZZ_LIBRARY_CALLS_H
#define SWCTL_FUZZ_LIBRARY_CALLS_H

#include "support/input.h"

namespace swfuzz {

// The chip and the library's own words as at the start of a program.
void reset();

// Makes calls until the input ends or `most` have been made.
void make_calls(Input &input, int most);

}  // namespace swfuzz

#endif
