// SPDX-License-Identifier: MIT
#include "mac_text.h"

#include <charconv>
#include <cstdio>

namespace swsh {
namespace {

constexpr size_t kMacBytes = 6;
constexpr int kMacBase = 16;
constexpr unsigned kMacByteBits = 8;
constexpr unsigned kMacByteMask = 0xff;

// How many bytes are between two of these, if they separate bytes at all.
size_t mac_group_of(char separator) {
  switch (separator) {
    case ':':
    case '-': return 1;
    case '.': return 2;
    default: return 0;
  }
}

// The bytes of a group without a separator; nothing if it is none.
std::vector<int64_t> parse_mac_group(std::string_view digits) {
  unsigned number = 0;
  const char *end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number, kMacBase);
  if (error != std::errc() || stop != end) return {};
  if (digits.size() == 2) return {number};
  return {number >> kMacByteBits, number & kMacByteMask};
}

// Groups of so many digits with that separator between them.
std::vector<int64_t> parse_mac_groups(std::string_view word, char separator, size_t digits) {
  std::vector<int64_t> bytes;
  for (size_t start = 0; start < word.size(); start += digits + 1) {
    if (start != 0 && word[start - 1] != separator) return {};
    const std::vector<int64_t> group = parse_mac_group(word.substr(start, digits));
    if (group.empty()) return {};
    bytes.insert(bytes.end(), group.begin(), group.end());
  }
  return bytes;
}

}  // namespace

std::vector<int64_t> parse_mac(std::string_view word) {
  const size_t at = word.find_first_of(":-.");
  if (at == std::string_view::npos) return {};
  const size_t bytes = mac_group_of(word[at]);
  const size_t groups = kMacBytes / bytes;
  if (at != 2 * bytes || word.size() != 2 * kMacBytes + groups - 1) return {};
  return parse_mac_groups(word, word[at], at);
}

std::string mac_text(const uint8_t *mac) {
  char text[3 * kMacBytes];
  snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3],
           mac[4], mac[5]);
  return text;
}

}  // namespace swsh
