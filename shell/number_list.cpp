// SPDX-License-Identifier: MIT
#include "number_list.h"

#include <algorithm>
#include <charconv>
#include <set>

#include "text.h"

namespace swsh {
namespace {

constexpr int kBaseTen = 10;
constexpr int kBaseSixteen = 16;

bool has_hexadecimal_prefix(std::string_view word) {
  return word.starts_with("0x") || word.starts_with("0X");
}

struct Range {
  int64_t first = 0;
  int64_t last = 0;
  std::string fault;
};

Range bad_range(std::string_view culprit, const std::string &what) {
  return {0, 0, in_quotes(culprit) + " is " + what};
}

Range parse_range(std::string_view item, int64_t low, int64_t high) {
  if (item.empty()) return {0, 0, "a number is missing"};
  // The search starts after the first character: that may be a minus sign.
  const size_t dash = item.find('-', 1);
  const std::string_view start = item.substr(0, dash);
  const std::string_view end = dash == std::string_view::npos ? start : item.substr(dash + 1);
  const ParsedNumber first = parse_number(start, low, high);
  if (!first.fault.empty()) return bad_range(start, first.fault);
  const ParsedNumber last = parse_number(end, low, high);
  if (!last.fault.empty()) return bad_range(end, last.fault);
  if (last.number < first.number)
    return {0, 0, "the range " + std::string(item) + " runs backwards"};
  return {first.number, last.number, ""};
}

void append_run(std::string &text, int64_t first, int64_t last) {
  constexpr int64_t kShortestRange = 3;
  if (!text.empty()) text += ',';
  text += std::to_string(first);
  if (last == first) return;
  text += last - first + 1 < kShortestRange ? ',' : '-';
  text += std::to_string(last);
}

}  // namespace

ParsedNumber parse_number(std::string_view word, int64_t low, int64_t high) {
  const bool hexadecimal = has_hexadecimal_prefix(word);
  const std::string_view digits = hexadecimal ? word.substr(2) : word;
  const char *end = digits.data() + digits.size();
  int64_t number = 0;
  const auto [stop, error] =
      std::from_chars(digits.data(), end, number, hexadecimal ? kBaseSixteen : kBaseTen);
  if (error == std::errc::result_out_of_range) return {0, "out of range"};
  const bool signed_hexadecimal = hexadecimal && digits.starts_with('-');
  if (error != std::errc() || stop != end || signed_hexadecimal) {
    return {0, "not a number"};
  }
  if (number < low || number > high) return {0, "out of range"};
  return {number, ""};
}

ParsedList parse_number_list(std::string_view word, int64_t low, int64_t high) {
  std::set<int64_t> numbers;
  for (size_t start = 0; start <= word.size();) {
    const size_t comma = std::min(word.find(',', start), word.size());
    const Range range = parse_range(word.substr(start, comma - start), low, high);
    if (!range.fault.empty()) return {{}, range.fault};
    for (int64_t number = range.first; number <= range.last; ++number) numbers.insert(number);
    start = comma + 1;
  }
  return {{numbers.begin(), numbers.end()}, ""};
}

std::string number_list_text(const std::vector<int64_t> &numbers) {
  std::string text;
  for (size_t first = 0; first < numbers.size();) {
    size_t last = first;
    while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) ++last;
    append_run(text, numbers[first], numbers[last]);
    first = last + 1;
  }
  return text;
}

}  // namespace swsh
