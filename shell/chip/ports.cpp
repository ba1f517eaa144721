// SPDX-License-Identifier: MIT
#include "chip/ports.h"

#include <swctl/platform/adapter.h>

#include <algorithm>

#include "fault.h"
#include "number_list.h"

namespace swsh {
namespace {

// The chip's port numbers are below 32; the adapter answers something else for
// an interface that the board does not have.
constexpr int32_t kChipPorts = 32;

bool is_chip_port(int32_t port) {
  return port >= 0 && port < kChipPorts;
}

constexpr auto kToPort = SWSH_CALL(adp_intf_2_phy_id);

// An adapter that fails answers as one whose board has no such interface. Its
// way back tells: it leads to the interface from no port, and from some port to
// another interface.
void expect_absent(int64_t interface, int32_t result) {
  bool answers = false;
  for (int32_t port = 0; port < kChipPorts; ++port) {
    const int32_t back = adp_phy_2_intf_id(port);
    answers |= back >= 0;
    if (back != interface) continue;
    answers = false;
    break;
  }
  if (!answers)
    refuse({kToPort.name, result}, subject_of("interface " + std::to_string(interface)));
}

// The chip's port of an interface; none if the board does not have it.
std::optional<int32_t> chip_port_of(int64_t interface) {
  const int32_t port = kToPort.get()(static_cast<int32_t>(interface));
  if (is_chip_port(port)) return port;
  expect_absent(interface, port);
  return std::nullopt;
}

CommandError no_such_port(int64_t interface) {
  std::vector<int64_t> present;
  for (const Port &port : front_ports()) present.push_back(port.interface);
  const std::string number = std::to_string(interface);
  return CommandError(wrong_usage("interface " + number + " has no port on this board", number,
                                  {"interfaces " + number_list_text(present)}));
}

}  // namespace

Port port_of(int64_t interface) {
  const std::optional<int32_t> chip = chip_port_of(interface);
  if (!chip) throw no_such_port(interface);
  return {interface, *chip};
}

std::vector<Port> ports_of(const std::vector<int64_t> &interfaces) {
  std::vector<Port> ports;
  for (const int64_t interface : interfaces) ports.push_back(port_of(interface));
  return ports;
}

std::vector<Port> front_ports() {
  std::vector<Port> ports;
  for (int64_t interface = 1; interface <= USER_FRONT_INTERFACES; ++interface) {
    const std::optional<int32_t> chip = chip_port_of(interface);
    if (chip) ports.push_back({interface, *chip});
  }
  return ports;
}

std::vector<int64_t> interfaces_given(const Arguments &arguments, const std::string &name) {
  if (!arguments.at(name).all) return arguments.numbers(name);
  std::vector<int64_t> interfaces;
  for (const Port &port : front_ports()) interfaces.push_back(port.interface);
  return interfaces;
}

std::vector<Port> ports_given(const Arguments &arguments, const std::string &name) {
  return ports_of(interfaces_given(arguments, name));
}

std::vector<Port> chosen_ports(const Arguments &arguments) {
  return arguments.has("PORTS") ? ports_given(arguments, "PORTS") : front_ports();
}

std::map<uint32_t, std::vector<int64_t>> interfaces_by(
    const std::vector<Port> &ports, const std::function<uint32_t(const Port &port)> &answer) {
  std::map<uint32_t, std::vector<int64_t>> interfaces;
  for (const Port &port : ports) interfaces[answer(port)].push_back(port.interface);
  return interfaces;
}

Interfaces::Interfaces() {
  for (int64_t interface = 0; interface <= USER_FRONT_INTERFACES; ++interface) {
    const std::optional<int32_t> chip = chip_port_of(interface);
    if (chip) by_port_.emplace(*chip, interface);
  }
}

std::optional<int64_t> Interfaces::of(int32_t chip_port) const {
  const auto found = by_port_.find(chip_port);
  if (found == by_port_.end()) return std::nullopt;
  return found->second;
}

uint32_t portmask_of(const std::vector<int64_t> &interfaces) {
  uint32_t mask = 0;
  for (const Port &port : ports_of(interfaces)) mask |= uint32_t{1} << port.chip;
  return mask;
}

user_pbmp_t bitmap_of(const std::vector<int64_t> &interfaces) {
  return {{portmask_of(interfaces)}};
}

std::vector<int64_t> interfaces_of(const Interfaces &interfaces, uint32_t portmask) {
  std::vector<int64_t> all;
  for (int32_t port = 0; port < kChipPorts; ++port) {
    if ((portmask >> port & 1) == 0) continue;
    const std::optional<int64_t> interface = interfaces.of(port);
    if (interface) all.push_back(*interface);
  }
  std::sort(all.begin(), all.end());
  return all;
}

std::vector<int64_t> interfaces_in(const user_pbmp_t &ports) {
  return interfaces_of(Interfaces(), ports.word[0]);
}

}  // namespace swsh
