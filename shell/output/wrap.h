// SPDX-License-Identifier: MIT
// Long lines, for the width of a terminal.
#ifndef SWCTL_SHELL_OUTPUT_WRAP_H
#define SWCTL_SHELL_OUTPUT_WRAP_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace swsh {

// Columns of text that goes to no terminal.
inline constexpr size_t kUsualWidth = 80;

// Columns of the terminal at the descriptor; nothing if there is none. The
// variable COLUMNS comes first, as everywhere.
std::optional<size_t> terminal_width(int descriptor);

// Columns for text that goes to the descriptor, terminal or not.
size_t text_width(int descriptor);

// The parts in lines, with a space between two of a line. The first line begins
// at the column `start`, the others after `indent` spaces. No line is longer than
// `width` but for one part that is. Without a line end after the last.
std::string wrapped(const std::vector<std::string> &parts, size_t start, size_t indent,
                    size_t width);

// The same of the words of a text.
std::string wrapped(const std::string &text, size_t start, size_t indent, size_t width);

}  // namespace swsh

#endif
