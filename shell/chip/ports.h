// SPDX-License-Identifier: MIT
// From logical interfaces to the chip's ports, and calls on them.
#ifndef SWCTL_SHELL_CHIP_PORTS_H
#define SWCTL_SHELL_CHIP_PORTS_H

#include <swctl/types.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
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

// The interfaces of ports by what `answer` says of each.
std::map<uint32_t, std::vector<int64_t>> interfaces_by(
    const std::vector<Port> &ports, const std::function<uint32_t(const Port &port)> &answer);

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
// The same for something that is not a port: `subject` says what was refused,
// "02:00:5e:00:00:01 in VLAN 10".
void check_call(int32_t result, const char *function, const std::string &subject);

// For results that are refusals although they are not negative.
[[noreturn]] void refuse_port(int32_t result, const char *function, int64_t interface);
[[noreturn]] void refuse_call(int32_t result, const char *function, const std::string &subject);

// The subject of a call on a port, "port 3", and on a whole unit, "unit 0".
std::string port_text(const Port &port);
std::string unit_text(const Context &context);

// The way back from chip ports to interfaces, the CPU's included. The board is
// asked once, so that a table of thousands of ports costs no more.
class Interfaces {
 public:
  Interfaces();
  // None if no interface is on the port.
  std::optional<int64_t> of(int32_t chip_port) const;

 private:
  std::map<int32_t, int64_t> by_port_;
};

// Interfaces against a bitmap of chip ports. Ports without an interface are
// left out; bitmap_of() throws as ports_of() does.
std::vector<int64_t> interfaces_in(const user_pbmp_t &ports);
user_pbmp_t bitmap_of(const std::vector<int64_t> &interfaces);

}  // namespace swsh

#endif
