// SPDX-License-Identifier: MIT
// A load that has to be confirmed: until then a process of its own waits to bring the old
// configuration back, also when the session is gone.
#ifndef SWCTL_SHELL_CONFIG_PENDING_H
#define SWCTL_SHELL_CONFIG_PENDING_H

#include <cstdint>
#include <string>

#include "command/table.h"

namespace swsh {

// The program that can wait, which is this one where main() says so; without, no load can ask
// for a confirmation.
void set_waiting_program(const char *path);

// Starts to wait; `text` comes back after the seconds. Throws a CommandError if another load
// waits already, or if there is no process.
void await_confirmation(uint32_t unit, int64_t seconds, const std::string &text);

// Ends the wait. False if none waits.
bool confirm(uint32_t unit);

// What the process does that waits: "SECONDS" is the option's value. Returns its status.
int bring_back_after(const Context &context, int64_t seconds);

}  // namespace swsh

#endif
