// SPDX-License-Identifier: MIT
// Which files of the running program answer a name.
#ifndef SWCTL_SHELL_CHIP_OBJECTS_IN_USE_H
#define SWCTL_SHELL_CHIP_OBJECTS_IN_USE_H

#include <string>
#include <vector>

namespace swsh {

// The files that define the function, in the order in which a call would find
// them: all but the last are between the caller and the one that answers. The
// program itself, which sees every call to the platform, does not count.
std::vector<std::string> files_beyond_program(const char *function);

}  // namespace swsh

#endif
