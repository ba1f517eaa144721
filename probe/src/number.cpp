// SPDX-License-Identifier: MIT
#include "number.h"

#include <charconv>

namespace swprobe {
namespace {

std::optional<uint64_t> parse_digits(const char *begin, const char *end, int base) {
  uint64_t value = 0;
  const auto [stop, error] = std::from_chars(begin, end, value, base);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

std::optional<std::vector<int64_t>> parse_bytes(const std::string &word) {
  std::vector<int64_t> bytes;
  for (size_t at = 0; at <= word.size();) {
    const size_t end = std::min(word.find(':', at), word.size());
    const auto byte = parse_digits(word.data() + at, word.data() + end, 16);
    if (!byte || *byte > 0xff) return std::nullopt;
    bytes.push_back(static_cast<int64_t>(*byte));
    at = end + 1;
  }
  return bytes;
}

}  // namespace

std::optional<int64_t> parse_number(const std::string &word) {
  const char *begin = word.data();
  const char *end = begin + word.size();
  const bool negative = begin != end && *begin == '-';
  if (negative) ++begin;
  const bool hex = end - begin > 2 && begin[0] == '0' && begin[1] == 'x';
  const auto digits = parse_digits(hex ? begin + 2 : begin, end, hex ? 16 : 10);
  if (!digits) return std::nullopt;
  if (negative && *digits > uint64_t{1} << 63) return std::nullopt;
  return static_cast<int64_t>(negative ? uint64_t{0} - *digits : *digits);
}

std::optional<std::vector<int64_t>> parse_numbers(const std::string &word) {
  if (word.find(':') != std::string::npos) return parse_bytes(word);
  const auto number = parse_number(word);
  if (!number) return std::nullopt;
  return std::vector<int64_t>{*number};
}

bool fits(int64_t value, size_t width) {
  if (width >= sizeof value) return true;
  const int bits = static_cast<int>(8 * width);
  return value >= -(int64_t{1} << (bits - 1)) && value < int64_t{1} << bits;
}

bool same(int64_t a, int64_t b, size_t width) {
  if (width >= sizeof a) return a == b;
  const uint64_t bits = (uint64_t{1} << (8 * width)) - 1;
  return ((static_cast<uint64_t>(a) ^ static_cast<uint64_t>(b)) & bits) == 0;
}

}  // namespace swprobe
