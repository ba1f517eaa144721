// SPDX-License-Identifier: MIT
#include "frame_words.h"

#include <swctl-vchip/frame.h>

#include <string_view>

#include "usage_error.h"

namespace vchipctl {
namespace {

constexpr std::string_view kDigits = "0123456789abcdef";
constexpr size_t kNamedDigits = 40;

// A word as a complaint names it: a frame may have thousands of digits.
std::string named(const std::string &word) {
  return "'" + (word.size() <= kNamedDigits ? word : word.substr(0, kNamedDigits) + "...") + "'";
}

uint8_t digit(const std::string &word, size_t place) {
  const auto lower = static_cast<char>(word[place] | 0x20);
  const size_t value = kDigits.find(word[place] <= '9' ? word[place] : lower);
  if (value == std::string_view::npos)
    throw UsageError("no frame " + named(word) + ": expected hexadecimal digits, two a byte");
  return static_cast<uint8_t>(value);
}

}  // namespace

std::vector<uint8_t> parse_frame(const std::string &word) {
  std::vector<uint8_t> bytes;
  for (size_t place = 0; place < word.size(); place += 2) {
    const uint8_t high = digit(word, place);
    if (place + 1 == word.size())
      throw UsageError("no frame " + named(word) + ": an odd number of digits");
    bytes.push_back(static_cast<uint8_t>(high << 4 | digit(word, place + 1)));
  }
  if (bytes.size() < VCHIP_FRAME_MIN || bytes.size() > VCHIP_FRAME_MAX)
    throw UsageError("frame " + named(word) + " has " + std::to_string(bytes.size()) +
                     " bytes: expected " + std::to_string(VCHIP_FRAME_MIN) + " to " +
                     std::to_string(VCHIP_FRAME_MAX));
  return bytes;
}

std::string hex(const std::vector<uint8_t> &bytes) {
  std::string text;
  text.reserve(bytes.size() * 2);
  for (const uint8_t byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xf];
  }
  return text;
}

}  // namespace vchipctl
