// SPDX-License-Identifier: MIT
// In a build without libpcap there are no captures.
#include "capture.h"
#include "usage_error.h"

namespace vchipctl {

std::vector<CapturedFrame> read_capture(const std::string &file,
                                        const std::optional<std::string> & /*filter*/) {
  throw Refused(file + ": this vchipctl was built without libpcap and reads no captures");
}

}  // namespace vchipctl
