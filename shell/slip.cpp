// SPDX-License-Identifier: MIT
#include "slip.h"

#include <algorithm>

namespace swsh {
namespace {

constexpr size_t kShortestSlip = 3;
constexpr std::string_view kDecimalDigits = "0123456789";

char small(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

std::string small(std::string_view word) {
  std::string all(word);
  for (char &letter : all) letter = small(letter);
  return all;
}

// Both begin where the words differ.
bool is_slip_of_different(std::string_view word, std::string_view meant) {
  const auto rest = [](std::string_view text, size_t from) {
    return text.substr(std::min(from, text.size()));
  };
  const bool too_many = rest(word, 1) == meant;
  const bool missing = word == rest(meant, 1);
  const bool wrong = rest(word, 1) == rest(meant, 1);
  const bool swapped = word.size() > 1 && meant.size() > 1 && word[0] == meant[1] &&
                       word[1] == meant[0] && rest(word, 2) == rest(meant, 2);
  return too_many || missing || wrong || swapped;
}

}  // namespace

bool is_slip(std::string_view word, std::string_view meant) {
  const std::string typed = small(word);
  const std::string wanted = small(meant);
  const auto [at, other] = std::ranges::mismatch(typed, wanted);
  const auto same = static_cast<size_t>(at - typed.begin());
  return is_slip_of_different(std::string_view(typed).substr(same),
                              std::string_view(wanted).substr(same));
}

std::vector<std::string> one_slip_away(const std::string &word,
                                       const std::vector<std::string> &words) {
  std::vector<std::string> meant;
  const bool is_number = word.find_first_not_of(kDecimalDigits) == std::string::npos;
  if (word.size() < kShortestSlip || is_number) return meant;
  for (const std::string &each : words)
    if (is_slip(word, each)) meant.push_back(each);
  return meant;
}

}  // namespace swsh
