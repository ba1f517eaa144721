// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_CONFIG_LINES_H
#define SWCTL_SHELL_CONFIG_LINES_H

#include <string>
#include <vector>

#include "config/state.h"

namespace swsh {

// A line of a configuration: a command, or what cannot be read.
struct TextLine {
  std::string object;
  std::string setting;
  std::string command;  // empty: `unread` says why
  const Unread *unread = nullptr;

  std::string text() const;
};

// In the order in which it loads; what cannot be read of an object is after its settings. The
// lines point into the state.
std::vector<TextLine> text_lines(const State &state, const Board &board);
std::string text_of(const State &state, const Board &board);

// What diff -u prints for two configurations; nothing if they are the same.
std::string unified_diff(const std::string &from_name, const std::vector<std::string> &from,
                         const std::string &to_name, const std::vector<std::string> &to);

}  // namespace swsh

#endif
