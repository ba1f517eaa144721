// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_COMMAND_COMPLETION_H
#define SWCTL_SHELL_COMMAND_COMPLETION_H

#include <cstddef>
#include <string>
#include <vector>

#include "command/table.h"
#include "command/walker.h"

namespace swsh {

// The words that may follow `words` and begin with `prefix`, with their help; no
// place holders. Nothing if one of the words is wrong.
std::vector<Expected> completions(const Node &root, const std::vector<std::string> &words,
                                  const std::string &prefix);

// The same for a whole command line: words[0] is the program, options may
// follow, and the word at `index` is the one to complete.
std::vector<Expected> line_completions(const Node &root, std::vector<std::string> words,
                                       size_t index);

}  // namespace swsh

#endif
