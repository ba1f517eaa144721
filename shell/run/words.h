// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_RUN_WORDS_H
#define SWCTL_SHELL_RUN_WORDS_H

#include <string>
#include <string_view>
#include <vector>

namespace swsh {

struct Line {
  std::vector<std::string> words;
  // A blank, or nothing, follows the last word: the next word is new.
  bool at_new_word = true;
  std::string fault;  // empty: the line is good
};

// Splits a command. Blanks separate words; ' and " hold a word together; a
// backslash takes the next character as it is, except inside '...'; a word that
// begins with # starts a comment. A command may have several lines.
class Splitter {
 public:
  // Reads one more line, without its end. True if its last character is a
  // backslash that makes the next line part of this one; that is in no word.
  bool add(std::string_view line);
  Line finish();

 private:
  bool at_comment(char character) const { return !in_word_ && quote_ == 0 && character == '#'; }
  void step(char character);
  void take(char character);
  void end_word();

  Line line_;
  std::string word_;
  char quote_ = 0;
  bool in_word_ = false;
  bool escaped_ = false;  // the next character is taken as it is
};

// A command of one line.
Line split_words(std::string_view line);

}  // namespace swsh

#endif
