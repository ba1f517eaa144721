// SPDX-License-Identifier: MIT
// A call as one line of text.
#ifndef SWCTL_PROBE_LINE_H
#define SWCTL_PROBE_LINE_H

#include <swctl-probe/probe.h>

namespace swprobe {

// `sentence` explains the result and may be null.
std::string line_of(const Call &call, const char *sentence);
// Of what a call has answered, after lines about what it did: "} = 0, link=>1".
std::string closing_of(const Call &call, const char *sentence);
// Of what goes into the call: without result and outputs.
std::string question_of(Call call);

}  // namespace swprobe

#endif
