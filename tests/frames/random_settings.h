// SPDX-License-Identifier: MIT
// Settings of every block and frames of every kind, at random but the same for
// the same numbers.
#ifndef SWCTL_TESTS_FRAMES_RANDOM_SETTINGS_H
#define SWCTL_TESTS_FRAMES_RANDOM_SETTINGS_H

#include <random>

#include "switch.h"

namespace frames {

void set_at_random(std::mt19937 &random);
Bytes frame_at_random(std::mt19937 &random);

}  // namespace frames

#endif
