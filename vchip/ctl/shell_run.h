// SPDX-License-Identifier: MIT
#ifndef VCHIPCTL_SHELL_RUN_H
#define VCHIPCTL_SHELL_RUN_H

#include <string>

namespace vchipctl {

// Runs the lines of a file by swctl, on the chip that the environment names:
// the swctl beside this program, else the one in PATH. What it prints goes to
// standard error. Throws Refused unless all lines were done.
void run_shell(const std::string &file);

}  // namespace vchipctl

#endif
