// SPDX-License-Identifier: MIT
#include "command/completion.h"

#include "run/options.h"

namespace swsh {
namespace {

std::vector<Expected> option_completions(const std::string &prefix) {
  std::vector<Expected> all;
  const std::string dash = prefix.starts_with("--") ? "--" : "-";
  for (const Option &option : options()) {
    const std::string word = dash + option.name;
    if (!option.help.empty() && word.starts_with(prefix)) all.push_back({word, option.help});
  }
  return all;
}

// The index of the first word that is neither an option nor its value.
size_t skip_options(const std::vector<std::string> &words, size_t index) {
  size_t at = 1;
  while (at < index && words[at].starts_with('-')) at += option_takes_value(words[at]) ? 2 : 1;
  return at;
}

// Takes the options out of a command's words, with their values. False if the
// last one still lacks its value.
bool drop_options(std::vector<std::string> &words) {
  for (size_t at = 0; at < words.size();) {
    const Option *option = spelled_option(words[at]);
    if (option == nullptr) {
      ++at;
      continue;
    }
    const size_t count = option->value.empty() ? 1 : 2;
    if (at + count > words.size()) return false;
    const auto first = words.begin() + static_cast<std::ptrdiff_t>(at);
    words.erase(first, first + static_cast<std::ptrdiff_t>(count));
  }
  return true;
}

}  // namespace

std::vector<Expected> completions(const Node &root, const std::vector<std::string> &words,
                                  const std::string &prefix) {
  const Walk found = walk(root, words);
  std::vector<Expected> all;
  if (found.wrong || found.help) return all;
  for (const Expected &each : found.expected) {
    if (each.literal && each.word.starts_with(prefix)) all.push_back(each);
  }
  return all;
}

std::vector<Expected> line_completions(const Node &root, std::vector<std::string> words,
                                       size_t index) {
  if (index == 0) return {};
  words.resize(index + 1);
  const size_t start = skip_options(words, index);
  if (start > index) return {};  // the value of an option
  if (start == index && words[index].starts_with('-')) return option_completions(words[index]);
  const std::string prefix = words.back();
  words.pop_back();
  words.erase(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(start));
  if (!drop_options(words)) return {};
  std::vector<Expected> all = completions(root, words, prefix);
  if (prefix.starts_with('-')) {
    for (Expected &option : option_completions(prefix)) all.push_back(std::move(option));
  }
  return all;
}

}  // namespace swsh
