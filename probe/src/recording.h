// SPDX-License-Identifier: MIT
// Lines of a recording; read_recording() in probe.h reads them back.
#ifndef SWCTL_PROBE_RECORDING_H
#define SWCTL_PROBE_RECORDING_H

#include <swctl-probe/probe.h>

#include <bit>

namespace swprobe {

inline constexpr char kRecordingFormat[] = "swctl-calls";
inline constexpr int kRecordingVersion = 1;
inline constexpr char kLittle[] = "little";
inline constexpr char kBig[] = "big";
inline constexpr const char *kThisByteOrder =
    std::endian::native == std::endian::big ? kBig : kLittle;

std::string recording_header();
std::string recording_line(const Call &call);

}  // namespace swprobe

#endif
