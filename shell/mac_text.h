// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_MAC_TEXT_H
#define SWCTL_SHELL_MAC_TEXT_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace swsh {

// The six bytes of an address written as 02:00:5e:00:00:01, 02-00-5e-00-00-01
// or 0200.5e00.0001; nothing for any other word.
std::vector<int64_t> parse_mac(std::string_view word);

// With colons, in small letters.
std::string mac_text(const uint8_t *mac);

}  // namespace swsh

#endif
