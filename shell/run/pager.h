// SPDX-License-Identifier: MIT
// Answers longer than the terminal is high are shown by another program.
#ifndef SWCTL_SHELL_RUN_PAGER_H
#define SWCTL_SHELL_RUN_PAGER_H

#include <string>

namespace swsh {

// The command of the pager for what goes to the descriptor: SWCTL_PAGER, PAGER, or less if it
// is there. Empty if there is none, if the variable says so, or if the descriptor is no
// terminal that a pager could use.
std::string pager_for(int descriptor);

// Shows a text that does not fit the terminal. False if it does or if the pager could not be
// started; then the text has not been shown.
bool show_by_pager(const std::string &pager, const std::string &text, int descriptor);

}  // namespace swsh

#endif
