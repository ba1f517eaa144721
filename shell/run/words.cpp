// SPDX-License-Identifier: MIT
#include "run/words.h"

#include <utility>

namespace swsh {
namespace {

// The same in every locale.
bool is_blank(char character) {
  return std::string_view(" \t\n\v\f\r").find(character) != std::string_view::npos;
}

}  // namespace

bool Splitter::add(std::string_view line) {
  for (const char character : line) {
    if (!escaped_ && at_comment(character)) break;
    step(character);
  }
  return std::exchange(escaped_, false);
}

Line Splitter::finish() {
  if (quote_ != 0) {
    line_.fault = "a quote ";
    line_.fault += quote_;
    line_.fault += " is not closed";
  }
  line_.at_new_word = !in_word_;
  end_word();
  return std::move(line_);
}

void Splitter::step(char character) {
  if (std::exchange(escaped_, false)) {
    take(character);
  } else if (quote_ != '\'' && character == '\\') {
    escaped_ = true;
  } else if (quote_ != 0) {
    character == quote_ ? void(quote_ = 0) : take(character);
  } else if (character == '\'' || character == '"') {
    quote_ = character;
    in_word_ = true;
  } else if (is_blank(character)) {
    end_word();
  } else {
    take(character);
  }
}

void Splitter::take(char character) {
  word_ += character;
  in_word_ = true;
}

void Splitter::end_word() {
  if (in_word_) line_.words.push_back(word_);
  word_.clear();
  in_word_ = false;
}

Line split_words(std::string_view line) {
  Splitter splitter;
  splitter.add(line);
  return splitter.finish();
}

}  // namespace swsh
