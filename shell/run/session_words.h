// SPDX-License-Identifier: MIT
// The words of a session or batch itself, beside those of the table.
#ifndef SWCTL_SHELL_RUN_SESSION_WORDS_H
#define SWCTL_SHELL_RUN_SESSION_WORDS_H

#include <algorithm>
#include <string>
#include <vector>

#include "command/walker.h"

namespace swsh {

inline const std::vector<Expected> &session_words() {
  static const std::vector<Expected> words = {{"exit", "End the session", true},
                                              {"quit", "End the session", true}};
  return words;
}

inline bool ends_session(const std::vector<std::string> &words) {
  return words.size() == 1 && std::ranges::any_of(session_words(), [&](const Expected &each) {
           return each.word == words.front();
         });
}

}  // namespace swsh

#endif
