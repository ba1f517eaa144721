// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_CONFIG_KINDS_WORDS_H
#define SWCTL_SHELL_CONFIG_KINDS_WORDS_H

#include <cstdint>
#include <string>

#include "config/setting.h"

namespace swsh {

// " tagged 1-4" of an interface mask; nothing of an empty one.
std::string list_words(const char *keyword, int64_t mask);
// What follows a keyword in a content; `otherwise` if it is not there.
std::string word_after(const std::string &words, const std::string &keyword,
                       const std::string &otherwise);

// The mask of a parameter of interfaces that is taken; 0 if it was not given.
int64_t take_interfaces(Statement &statement, const std::string &name);

}  // namespace swsh

#endif
