// SPDX-License-Identifier: MIT
#ifndef SWCTL_FAULTS_REPORT_H
#define SWCTL_FAULTS_REPORT_H

#include <string>

#include "faults.h"

namespace swfaults {

// A line for each run: call, fault, answer, what was called and what it said.
std::string table(const Outcome &outcome);
// How many runs came to which verdict, in one line.
std::string summary(const Outcome &outcome);
std::string json(const Settings &settings, const Outcome &outcome);
std::string junit(const Settings &settings, const Outcome &outcome);

}  // namespace swfaults

#endif
