// SPDX-License-Identifier: MIT
#include "run/words.h"

#include <cctype>

namespace swsh {
namespace {

bool is_blank(char character) {
  return std::isspace(static_cast<unsigned char>(character)) != 0;
}

class Splitter {
 public:
  explicit Splitter(std::string_view line) : rest_(line) {}

  Line split() {
    while (!rest_.empty() && !at_comment()) step(take());
    if (quote_ != 0) {
      line_.fault = "a quote ";
      line_.fault += quote_;
      line_.fault += " is not closed";
    }
    line_.at_new_word = !in_word_;
    end_word();
    return line_;
  }

 private:
  bool at_comment() const { return !in_word_ && rest_.front() == '#'; }

  char take() {
    const char character = rest_.front();
    rest_.remove_prefix(1);
    return character;
  }

  void step(char character) {
    if (quote_ != '\'' && character == '\\') {
      escape();
    } else if (quote_ != 0) {
      character == quote_ ? void(quote_ = 0) : add(character);
    } else if (character == '\'' || character == '"') {
      quote_ = character;
      in_word_ = true;
    } else if (is_blank(character)) {
      end_word();
    } else {
      add(character);
    }
  }

  void escape() {
    line_.continued = rest_.empty();
    if (!rest_.empty()) add(take());
  }

  void add(char character) {
    word_ += character;
    in_word_ = true;
  }

  void end_word() {
    if (in_word_) line_.words.push_back(word_);
    word_.clear();
    in_word_ = false;
  }

  std::string_view rest_;
  Line line_;
  std::string word_;
  char quote_ = 0;
  bool in_word_ = false;
};

}  // namespace

Line split_words(std::string_view line) {
  return Splitter(line).split();
}

}  // namespace swsh
