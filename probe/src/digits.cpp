// SPDX-License-Identifier: MIT
#include "digits.h"

#include <algorithm>
#include <charconv>

namespace swprobe {

std::string hex_digits(uint64_t value, size_t at_least) {
  char digits[2 * sizeof value];
  char *const end = std::to_chars(digits, digits + sizeof digits, value, 16).ptr;
  const std::string text(digits, end);
  return std::string(at_least - std::min(at_least, text.size()), '0') + text;
}

}  // namespace swprobe
