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

#include "chip/call.h"
#include "command/table.h"

namespace swsh {

// The interface that leads to the processor.
inline constexpr int64_t kCpuInterface = 0;

struct Port {
  int64_t interface = 0;
  int32_t chip = 0;  // the chip's number for it
};

// The port of an interface. Throws a CommandError of wrong usage if the board
// has none.
Port port_of(int64_t interface);
std::vector<Port> ports_of(const std::vector<int64_t> &interfaces);

// The interfaces and the ports that a command names; `all` are the front ports
// that the board has. The second throws as ports_of() does.
std::vector<int64_t> interfaces_given(const Arguments &arguments, const std::string &name);
std::vector<Port> ports_given(const Arguments &arguments, const std::string &name);

// All front ports that the board has, in the order of their interfaces. Throws
// a CommandError of status kRefused if there is none.
std::vector<Port> front_ports();

// The ports of PORTS, or all front ports if it was not given.
std::vector<Port> chosen_ports(const Arguments &arguments);

// The interfaces of ports by what `answer` says of each.
std::map<uint32_t, std::vector<int64_t>> interfaces_by(
    const std::vector<Port> &ports, const std::function<uint32_t(const Port &port)> &answer);

// Calls of the library on one port. Both throw as perform() does.
template <typename Value>
Value read_port(const Context &context, const Port &port,
                const Call<int32_t(uint32_t, uint32_t, int32_t, Value *)> &getter) {
  return ask(getter, port, kLead, context.unit, port.chip);
}
template <typename Value, typename Given>
void write_port(const Context &context, const Port &port,
                const Call<int32_t(uint32_t, uint32_t, int32_t, Value)> &setter, Given value) {
  perform(setter, port, kLead, context.unit, port.chip, static_cast<Value>(value));
}

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

// From interfaces to a mask or bitmap of chip ports and back. Ports without an
// interface are left out; the first two throw as ports_of() does.
uint32_t portmask_of(const std::vector<int64_t> &interfaces);
user_pbmp_t bitmap_of(const std::vector<int64_t> &interfaces);
std::vector<int64_t> interfaces_of(const Interfaces &interfaces, uint32_t portmask);
std::vector<int64_t> interfaces_in(const user_pbmp_t &ports);

}  // namespace swsh

#endif
