// SPDX-License-Identifier: MIT
// Lines of a recording; read_recording() in probe.h reads them back.
#ifndef SWCTL_PROBE_RECORDING_H
#define SWCTL_PROBE_RECORDING_H

#include <swctl-probe/probe.h>

namespace swprobe {

inline constexpr char kRecordingFormat[] = "swctl-calls";
inline constexpr int kRecordingVersion = 1;

std::string recording_header();
std::string recording_line(const Call &call);

}  // namespace swprobe

#endif
