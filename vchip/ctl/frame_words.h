// SPDX-License-Identifier: MIT
// Frames as words: hexadecimal digits from the destination address on.
#ifndef VCHIPCTL_FRAME_WORDS_H
#define VCHIPCTL_FRAME_WORDS_H

#include <cstdint>
#include <string>
#include <vector>

namespace vchipctl {

// Throws UsageError for a word that is no frame.
std::vector<uint8_t> parse_frame(const std::string &word);

std::string hex(const std::vector<uint8_t> &bytes);

}  // namespace vchipctl

#endif
