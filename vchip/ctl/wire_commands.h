// SPDX-License-Identifier: MIT
// vchipctl wire and wires: what is at the ports.
#ifndef VCHIPCTL_WIRE_COMMANDS_H
#define VCHIPCTL_WIRE_COMMANDS_H

#include <functional>
#include <optional>
#include <string>

#include "os/command_line.h"

namespace vchipctl {

struct WireWords {
  std::string unit = "0";
  std::string port;
  std::string wire;
  bool json = false;
  std::optional<std::string> up;  // ports that have to have a wire and a carrier
};

void wire(const WireWords &words);
void wires(const WireWords &words);

// The commands' words, and which of them is run.
void add_wire_commands(os::Command &app, WireWords &words, std::function<void()> &run);

}  // namespace vchipctl

#endif
