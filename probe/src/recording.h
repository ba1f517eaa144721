// SPDX-License-Identifier: MIT
// Lines of a recording; read_recording() in probe.h reads them back.
#ifndef SWCTL_PROBE_RECORDING_H
#define SWCTL_PROBE_RECORDING_H

#include <swctl-probe/probe.h>

#include <bit>

namespace swprobe {

inline constexpr char kRecordingFormat[] = "swctl-calls";
inline constexpr int kRecordingVersion = 1;
// With the functions of the library, and how deep inside those a call was made.
inline constexpr int kLibraryVersion = 2;
inline constexpr char kLittle[] = "little";
inline constexpr char kBig[] = "big";
inline constexpr const char *kThisByteOrder =
    std::endian::native == std::endian::big ? kBig : kLittle;

std::string recording_header(bool library = false);
std::string recording_line(const Call &call, bool library = false);

// A text between quotes. Bytes outside ASCII become the characters of the same
// number, so that a text in any encoding is valid JSON and comes back byte by
// byte.
void append_json_text(std::string &line, std::string_view text);

// The reverse. Both throw std::runtime_error saying what is wrong.
Call call_of(const std::string &line);
// Whether a recording with this header comes from a machine of the other byte
// order: its calls are then to be turned.
bool from_other_order(const std::string &header);
void turn_bytes(Call &call);

}  // namespace swprobe

#endif
