// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_TEXT_H
#define SWCTL_SHELL_TEXT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace swsh {

std::string join(const std::vector<std::string> &parts, std::string_view separator);

// The word with control characters written as \xNN, so that a message cannot
// move the cursor of the terminal it appears on.
std::string printable(std::string_view word);

// The same in double quotes.
std::string in_quotes(std::string_view word);

// 0x88cc
std::string hexadecimal(uint32_t number);

// The text, filled up with spaces to `width` characters.
std::string padded(std::string text, size_t width);

}  // namespace swsh

#endif
