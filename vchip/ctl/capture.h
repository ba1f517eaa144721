// SPDX-License-Identifier: MIT
// Frames of a capture file, read by libpcap where it was there to build with.
#ifndef VCHIPCTL_CAPTURE_H
#define VCHIPCTL_CAPTURE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vchipctl {

struct CapturedFrame {
  size_t number;  // in the file, from 1
  uint64_t time;  // its stamp, in nanoseconds
  std::vector<uint8_t> bytes;
};

// The whole capture, or the frames that a filter expression of libpcap lets
// through. Throws Refused for a file that is not there, is no capture of
// Ethernet, is cut off or holds a frame that no port takes, and UsageError for
// a wrong expression.
std::vector<CapturedFrame> read_capture(const std::string &file,
                                        const std::optional<std::string> &filter);

}  // namespace vchipctl

#endif
