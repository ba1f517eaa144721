// SPDX-License-Identifier: MIT
#include "output/wrap.h"

#include <algorithm>
#include <cstdlib>
#include <sys/ioctl.h>
#include <unistd.h>

#include "number_list.h"

namespace swsh {
namespace {

constexpr int64_t kMostColumns = 10000;

std::optional<size_t> width_of_environment() {
  const char *columns = getenv("COLUMNS");
  if (columns == nullptr) return std::nullopt;
  const ParsedNumber parsed = parse_number(columns, 1, kMostColumns);
  if (!parsed.fault.empty()) return std::nullopt;
  return static_cast<size_t>(parsed.number);
}

// A terminal that does not know its size says 0.
size_t width_of_terminal(int descriptor) {
  winsize size = {};
  const bool known = ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return known ? size.ws_col : kUsualWidth;
}

// Characters, not bytes: those of UTF-8 that go on with a character do not count.
size_t columns_of(const std::string &text) {
  return static_cast<size_t>(
      std::ranges::count_if(text, [](char each) { return (each & 0xc0) != 0x80; }));
}

std::vector<std::string> words_of(const std::string &text) {
  std::vector<std::string> words;
  for (size_t start = 0; start <= text.size();) {
    const size_t end = std::min(text.find(' ', start), text.size());
    words.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return words;
}

}  // namespace

std::optional<size_t> terminal_width(int descriptor) {
  if (isatty(descriptor) == 0) return std::nullopt;
  const auto told = width_of_environment();
  return told ? *told : width_of_terminal(descriptor);
}

size_t text_width(int descriptor) {
  const auto width = terminal_width(descriptor);
  return width ? *width : width_of_environment().value_or(kUsualWidth);
}

std::string wrapped(const std::vector<std::string> &parts, size_t start, size_t indent,
                    size_t width) {
  std::string all;
  size_t column = start;
  bool first_of_line = true;
  for (const std::string &part : parts) {
    const size_t length = columns_of(part);
    if (!first_of_line && column + 1 + length > width) {
      all += '\n' + std::string(indent, ' ');
      column = indent;
      first_of_line = true;
    }
    if (!first_of_line) all += ' ';
    column += length + (first_of_line ? 0 : 1);
    all += part;
    first_of_line = false;
  }
  return all;
}

std::string wrapped(const std::string &text, size_t start, size_t indent, size_t width) {
  return wrapped(words_of(text), start, indent, width);
}

}  // namespace swsh
