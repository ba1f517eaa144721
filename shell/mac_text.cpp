// SPDX-License-Identifier: MIT
#include "mac_text.h"

#include <charconv>
#include <cstdio>

namespace swsh {
namespace {

constexpr size_t kMacBytes = 6;
constexpr size_t kMacDigits = 2;
constexpr size_t kMacLength = kMacBytes * (kMacDigits + 1) - 1;
constexpr int kMacBase = 16;

}  // namespace

std::vector<int64_t> parse_mac(std::string_view word) {
  if (word.size() != kMacLength) return {};
  const char separator = word[kMacDigits];
  if (separator != ':' && separator != '-') return {};
  std::vector<int64_t> bytes;
  for (size_t start = 0; start < kMacLength; start += kMacDigits + 1) {
    if (start != 0 && word[start - 1] != separator) return {};
    unsigned byte = 0;
    const char *end = word.data() + start + kMacDigits;
    const auto [stop, error] = std::from_chars(end - kMacDigits, end, byte, kMacBase);
    if (error != std::errc() || stop != end) return {};
    bytes.push_back(byte);
  }
  return bytes;
}

std::string mac_text(const uint8_t *mac) {
  char text[kMacLength + 1];
  snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3],
           mac[4], mac[5]);
  return text;
}

}  // namespace swsh
