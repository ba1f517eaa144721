// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_RUN_WORDS_H
#define SWCTL_SHELL_RUN_WORDS_H

#include <string>
#include <string_view>
#include <vector>

namespace swsh {

struct Line {
  std::vector<std::string> words;
  // A blank, or nothing, stands behind the last word: the next word is new.
  bool at_new_word = true;
  // The last character is a backslash that makes the next line part of this
  // one. It is in no word.
  bool continued = false;
  std::string fault;  // empty: the line is good
};

// Splits a command line. Blanks separate words; ' and " hold a word together;
// a backslash takes the next character as it is, except inside '...'; a word
// that begins with # starts a comment.
Line split_words(std::string_view line);

}  // namespace swsh

#endif
