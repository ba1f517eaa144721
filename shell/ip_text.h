// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_IP_TEXT_H
#define SWCTL_SHELL_IP_TEXT_H

#include <cstdint>
#include <string>

namespace swsh {

// 192.0.2.1 is 0xc0000201.
std::string ip_text(uint32_t address);

// Sixteen bytes, the first one first; as short as it gets.
std::string ip6_text(const uint8_t *bytes);

}  // namespace swsh

#endif
