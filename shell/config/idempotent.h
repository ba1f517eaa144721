// SPDX-License-Identifier: MIT
// Commands that may run twice.
#ifndef SWCTL_SHELL_CONFIG_IDEMPOTENT_H
#define SWCTL_SHELL_CONFIG_IDEMPOTENT_H

#include <optional>
#include <string>
#include <vector>

#include "command/walker.h"

namespace swsh {

// Runs a command that makes settings: makes those that are not so yet, and adds a note about
// those that are. None if the command makes no settings. Throws as the command does, and
// a CommandError if something else is in the place of what it adds.
std::optional<Answer> run_if_needed(const Walk &found, const Context &context,
                                    std::vector<std::string> &notes);

// Gives each object that has "add" and "del" the command "replace", which makes what "add"
// makes whatever there was.
void add_replace_commands(Node &root);

}  // namespace swsh

#endif
