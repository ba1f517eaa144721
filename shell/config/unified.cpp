// SPDX-License-Identifier: MIT
// What diff -u prints. Two configurations have their lines in one order, so that what
// both have comes in the same order in each.
#include <algorithm>
#include <unordered_set>

#include "config/lines.h"

namespace swsh {
namespace {

constexpr size_t kContext = 3;

struct DiffLine {
  char sign;
  const std::string *text;
};

std::vector<DiffLine> merged(const std::vector<std::string> &from,
                             const std::vector<std::string> &to) {
  const std::unordered_set<std::string> here(from.begin(), from.end());
  const std::unordered_set<std::string> there(to.begin(), to.end());
  std::vector<DiffLine> lines;
  auto next = to.begin();
  for (const std::string &line : from) {
    if (!there.contains(line)) {
      lines.push_back({'-', &line});
      continue;
    }
    for (; next != to.end() && !here.contains(*next); ++next) lines.push_back({'+', &*next});
    if (next != to.end()) ++next;
    lines.push_back({' ', &line});
  }
  for (; next != to.end(); ++next)
    if (!here.contains(*next)) lines.push_back({'+', &*next});
  return lines;
}

// A range of a hunk's head, with the lines of one side before it and in it.
std::string range(size_t before, size_t count) {
  const size_t first = count == 0 ? before : before + 1;
  return count == 1 ? std::to_string(first) : std::to_string(first) + ',' + std::to_string(count);
}

size_t lines_with(const std::vector<DiffLine> &lines, size_t begin, size_t end, char other) {
  return static_cast<size_t>(std::count_if(
      lines.begin() + static_cast<ptrdiff_t>(begin), lines.begin() + static_cast<ptrdiff_t>(end),
      [=](const DiffLine &line) { return line.sign != other; }));
}

std::string hunk(const std::vector<DiffLine> &lines, size_t begin, size_t end) {
  std::string text =
      "@@ -" + range(lines_with(lines, 0, begin, '+'), lines_with(lines, begin, end, '+')) + " +" +
      range(lines_with(lines, 0, begin, '-'), lines_with(lines, begin, end, '-')) + " @@\n";
  for (size_t at = begin; at < end; ++at) text += lines[at].sign + *lines[at].text + '\n';
  return text;
}

}  // namespace

std::string unified_diff(const std::string &from_name, const std::vector<std::string> &from,
                         const std::string &to_name, const std::vector<std::string> &to) {
  const std::vector<DiffLine> lines = merged(from, to);
  std::string text;
  for (size_t at = 0; at < lines.size();) {
    if (lines[at].sign == ' ') {
      ++at;
      continue;
    }
    const size_t begin = at - std::min(at, kContext);
    size_t last = at;
    for (size_t each = at; each < lines.size() && each <= last + 2 * kContext; ++each)
      if (lines[each].sign != ' ') last = each;
    const size_t end = std::min(lines.size(), last + 1 + kContext);
    text += hunk(lines, begin, end);
    at = end;
  }
  return text.empty() ? "" : "--- " + from_name + "\n+++ " + to_name + '\n' + text;
}

}  // namespace swsh
