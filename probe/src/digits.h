// SPDX-License-Identifier: MIT
#ifndef SWCTL_PROBE_DIGITS_H
#define SWCTL_PROBE_DIGITS_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace swprobe {

// Hexadecimal digits in lower case, so many of them at least.
std::string hex_digits(uint64_t value, size_t at_least = 1);

}  // namespace swprobe

#endif
