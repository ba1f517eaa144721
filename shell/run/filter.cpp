// SPDX-License-Identifier: MIT
#include "run/filter.h"

#include <algorithm>
#include <sstream>

#include "output/writer.h"
#include "text.h"

namespace swsh {
namespace {

constexpr char kBar[] = "|";
constexpr char kInclude[] = "include";
constexpr char kCount[] = "count";

bool has_word(const std::string &text, const std::string &word) {
  return text.find(word) != std::string::npos;
}

std::vector<std::string> text_lines_of(const Answer &answer) {
  std::istringstream text(answer_text(answer, Format::human));
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

void include(Answer &answer, const std::string &word) {
  if (answer.shape == Shape::table) {
    std::erase_if(answer.records, [&](const Record &record) {
      return !has_word(line_text(record, Format::human), word);
    });
    return;
  }
  std::string text;
  for (const std::string &line : text_lines_of(answer))
    if (has_word(line, word)) text += line + '\n';
  std::erase_if(answer.records, [&](const Record &record) {
    return !has_word(line_text(record, Format::json), word);
  });
  answer.shape = Shape::text;
  answer.text = text;
}

void count(Answer &answer) {
  const size_t lines =
      answer.shape == Shape::table ? answer.records.size() : text_lines_of(answer).size();
  const auto number = static_cast<int64_t>(lines);
  answer = {Shape::text, {Record().add("count", number)}, std::to_string(number) + '\n'};
}

std::optional<Fault> take_filter(const std::vector<std::string> &words,
                                 std::vector<Filter> &filters) {
  if (words.size() == 1 && words[0] == kCount) {
    filters.push_back({true});
  } else if (words.size() == 2 && words[0] == kInclude) {
    filters.push_back({false, words[1]});
  } else {
    return wrong_usage("after a bar comes a filter", words.empty() ? "" : words[0],
                       {"include WORD", "count"});
  }
  return std::nullopt;
}

}  // namespace

std::optional<Fault> take_filters(std::vector<std::string> &words, std::vector<Filter> &filters) {
  auto bar = std::ranges::find(words, kBar);
  const auto command_end = bar;
  while (bar != words.end()) {
    const auto end = std::find(bar + 1, words.end(), kBar);
    const std::optional<Fault> fault = take_filter({bar + 1, end}, filters);
    if (fault) return fault;
    bar = end;
  }
  words.erase(command_end, words.end());
  return std::nullopt;
}

Answer filtered(Answer answer, const std::vector<Filter> &filters) {
  for (const Filter &filter : filters) {
    if (answer.shape == Shape::shown) return answer;
    if (filter.counts) {
      count(answer);
    } else {
      include(answer, filter.word);
    }
  }
  return answer;
}

}  // namespace swsh
