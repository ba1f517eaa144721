// SPDX-License-Identifier: MIT
// From logical interfaces to the chip's ports, and calls on them.
#ifndef SWCTL_SHELL_CHIP_PORTS_H
#define SWCTL_SHELL_CHIP_PORTS_H

#include <cstdint>
#include <vector>

#include "command/table.h"

namespace swsh {

struct Port {
  int64_t interface = 0;
  int32_t chip = 0;  // the chip's number for it
};

// The port of an interface. Throws a CommandError of wrong usage if the board
// has none.
Port port_of(int64_t interface);
std::vector<Port> ports_of(const std::vector<int64_t> &interfaces);

// All front ports that the board has, in the order of their interfaces. Throws
// a CommandError of status kRefused if there is none.
std::vector<Port> front_ports();

// Calls of the library on one port, with the name to report.
struct PortGetter {
  const char *name;
  int32_t (*call)(uint32_t lead, uint32_t unit, int32_t port, uint32_t *value);
};
struct PortSetter {
  const char *name;
  int32_t (*call)(uint32_t lead, uint32_t unit, int32_t port, uint32_t value);
};

// Both throw the CommandError of check_result() if the chip refuses.
uint32_t read_port(const Context &context, const Port &port, const PortGetter &getter);
void write_port(const Context &context, const Port &port, const PortSetter &setter, uint32_t value);

// Throws a CommandError of status kRefused if the result is negative: it names
// the function and the interface and says what the chip says.
void check_result(int32_t result, const char *function, int64_t interface);

}  // namespace swsh

#endif
