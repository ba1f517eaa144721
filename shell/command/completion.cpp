// SPDX-License-Identifier: MIT
#include "command/completion.h"

#include "command/walker.h"
#include "run/options.h"

namespace swsh {
namespace {

std::vector<std::string> option_completions(const std::string &prefix) {
  std::vector<std::string> all;
  const std::string dash = prefix.starts_with("--") ? "--" : "-";
  for (const Option &option : options()) {
    const std::string word = dash + option.name;
    if (!option.help.empty() && word.starts_with(prefix)) all.push_back(word);
  }
  return all;
}

// The index of the first word that is neither an option nor its value.
size_t skip_options(const std::vector<std::string> &words, size_t index) {
  size_t at = 1;
  while (at < index && words[at].starts_with('-')) at += option_takes_value(words[at]) ? 2 : 1;
  return at;
}

}  // namespace

std::vector<std::string> completions(const Node &root, const std::vector<std::string> &words,
                                     const std::string &prefix) {
  const Walk found = walk(root, words);
  std::vector<std::string> all;
  if (found.wrong || found.help) return all;
  for (const Expected &each : found.expected) {
    if (each.literal && each.word.starts_with(prefix)) all.push_back(each.word);
  }
  return all;
}

std::vector<std::string> line_completions(const Node &root, std::vector<std::string> words,
                                          size_t index) {
  if (index == 0) return {};
  words.resize(index + 1);
  const size_t start = skip_options(words, index);
  if (start > index) return {};  // the value of an option
  if (start == index && words[index].starts_with('-')) return option_completions(words[index]);
  const auto first = words.begin() + static_cast<std::ptrdiff_t>(start);
  return completions(root, {first, words.end() - 1}, words[index]);
}

}  // namespace swsh
