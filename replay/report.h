// SPDX-License-Identifier: MIT
#ifndef SWCTL_REPLAY_REPORT_H
#define SWCTL_REPLAY_REPORT_H

#include <string>

#include "replay.h"

namespace swreplay {

// Three lines about a difference.
std::string text_of(const Difference &difference);
// What was done, in one line.
std::string summary(const Outcome &outcome);
// Both as one JSON object.
std::string json_of(const Outcome &outcome);

}  // namespace swreplay

#endif
