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

int32_t chip_port_of(int64_t interface) {
  return adp_intf_2_phy_id(static_cast<int32_t>(interface));
}

// An adapter without a single port is no board with few ports: its platform is
// not working.
CommandError no_board() {
  Fault fault;
  fault.status = kRefused;
  fault.message = "the platform's adapter has no port for any interface";
  return CommandError(fault);
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
  const int32_t chip = chip_port_of(interface);
  if (!is_chip_port(chip)) throw no_such_port(interface);
  return {interface, chip};
}

std::vector<Port> ports_of(const std::vector<int64_t> &interfaces) {
  std::vector<Port> ports;
  for (const int64_t interface : interfaces) ports.push_back(port_of(interface));
  return ports;
}

std::vector<Port> front_ports() {
  std::vector<Port> ports;
  for (int32_t interface = 1; interface <= USER_FRONT_INTERFACES; ++interface) {
    const int32_t chip = chip_port_of(interface);
    if (is_chip_port(chip)) ports.push_back({interface, chip});
  }
  if (ports.empty()) throw no_board();
  return ports;
}

std::vector<Port> chosen_ports(const Arguments &arguments) {
  return arguments.has("PORTS") ? ports_of(arguments.numbers("PORTS")) : front_ports();
}

std::map<uint32_t, std::vector<int64_t>> interfaces_by(
    const std::vector<Port> &ports, const std::function<uint32_t(const Port &port)> &answer) {
  std::map<uint32_t, std::vector<int64_t>> interfaces;
  for (const Port &port : ports) interfaces[answer(port)].push_back(port.interface);
  return interfaces;
}

Interfaces::Interfaces() {
  for (int64_t interface = 0; interface <= USER_FRONT_INTERFACES; ++interface) {
    const int32_t chip = chip_port_of(interface);
    if (is_chip_port(chip)) by_port_.emplace(chip, interface);
  }
}

std::optional<int64_t> Interfaces::of(int32_t chip_port) const {
  const auto found = by_port_.find(chip_port);
  if (found == by_port_.end()) return std::nullopt;
  return found->second;
}

std::vector<int64_t> interfaces_in(const user_pbmp_t &ports) {
  const Interfaces board;
  std::vector<int64_t> interfaces;
  for (int32_t port = 0; port < kChipPorts; ++port) {
    const std::optional<int64_t> interface = board.of(port);
    if ((ports.word[0] >> port & 1) != 0 && interface) interfaces.push_back(*interface);
  }
  std::sort(interfaces.begin(), interfaces.end());
  return interfaces;
}

user_pbmp_t bitmap_of(const std::vector<int64_t> &interfaces) {
  user_pbmp_t ports = {};
  for (const Port &port : ports_of(interfaces)) ports.word[0] |= uint32_t{1} << port.chip;
  return ports;
}

}  // namespace swsh
