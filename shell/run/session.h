// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_RUN_SESSION_H
#define SWCTL_SHELL_RUN_SESSION_H

#include "command/table.h"
#include "fault.h"
#include "run/command.h"
#include "run/data_output.h"

namespace swsh {

// Reads and runs commands at a terminal until exit, quit or the end of input.
// A command that fails does not end the session.
Status run_session(const Node &root, const Context &context, const Style &style,
                   DataOutput &output);

}  // namespace swsh

#endif
