// SPDX-License-Identifier: MIT
// Files that are written whole or not at all.
#ifndef SWCTL_SHELL_CONFIG_STORE_H
#define SWCTL_SHELL_CONFIG_STORE_H

#include <string>

namespace swsh {

// Throws the CommandError that names the file and says why it is as before.
void write_whole(const std::string &path, const std::string &text);

}  // namespace swsh

#endif
