// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_COMMAND_MANUAL_H
#define SWCTL_SHELL_COMMAND_MANUAL_H

#include <string>

#include "command/table.h"

namespace swsh {

// The sections OPTIONS and COMMANDS of the manual page, in mdoc(7).
std::string manual_sections(const Node &root);

}  // namespace swsh

#endif
