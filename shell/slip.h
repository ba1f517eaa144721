// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_SLIP_H
#define SWCTL_SHELL_SLIP_H

#include <string>
#include <string_view>
#include <vector>

namespace swsh {

// Whether one letter is too many, missing, wrong, or has changed places with
// the next; or the words differ in capital letters alone.
bool is_slip(std::string_view word, std::string_view meant);

// The words that a word may have been meant to be. Numbers and words of one or
// two letters, which are close to too many others, are none.
std::vector<std::string> one_slip_away(const std::string &word,
                                       const std::vector<std::string> &words);

}  // namespace swsh

#endif
