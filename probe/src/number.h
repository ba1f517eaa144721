// SPDX-License-Identifier: MIT
// Numbers in the words of a plan.
#ifndef SWCTL_PROBE_NUMBER_H
#define SWCTL_PROBE_NUMBER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace swprobe {

// Decimal or, after 0x, hexadecimal; with an optional minus sign.
std::optional<int64_t> parse_number(const std::string &word);
// One number, or bytes as "02:00:00:00:00:01".
std::optional<std::vector<int64_t>> parse_numbers(const std::string &word);

// Whether a value fits into so many bytes, signed or unsigned.
bool fits(int64_t value, size_t width);
// Whether two values are the same bits in so many bytes: 0xffffffff is -1.
bool same(int64_t a, int64_t b, size_t width);

}  // namespace swprobe

#endif
