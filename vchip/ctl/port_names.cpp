// SPDX-License-Identifier: MIT
#include "port_names.h"

#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>

#include <algorithm>
#include <array>
#include <numeric>

#include "os/json.h"

namespace vchipctl {
namespace {

std::array<int32_t, VCHIP_PORTS> read_interfaces() {
  std::array<int32_t, VCHIP_PORTS> interfaces = {};
  for (size_t port = 0; port < interfaces.size(); ++port)
    interfaces[port] = vchip::port(0, static_cast<int32_t>(port)).interface;
  return interfaces;
}

// As unsigned numbers, those without an interface come last.
bool is_name_before(int32_t first, int32_t second) {
  const auto number = [](int32_t port) { return static_cast<uint32_t>(interface_of(port)); };
  return number(first) < number(second);
}

std::vector<int32_t> sorted_ports() {
  std::vector<int32_t> ports(VCHIP_PORTS);
  std::iota(ports.begin(), ports.end(), 0);
  std::stable_sort(ports.begin(), ports.end(), is_name_before);
  return ports;
}

}  // namespace

int32_t interface_of(int32_t port) {
  static const std::array<int32_t, VCHIP_PORTS> interfaces = read_interfaces();
  return interfaces[static_cast<size_t>(port)];
}

std::string port_name(int32_t port) {
  const int32_t interface = interface_of(port);
  return interface >= 0 ? std::to_string(interface) : std::string("p").append(std::to_string(port));
}

os::Json port_json(int32_t port) {
  const int32_t interface = interface_of(port);
  if (interface >= 0) return interface;
  return port_name(port);
}

const std::vector<int32_t> &ports_by_name() {
  static const std::vector<int32_t> ports = sorted_ports();
  return ports;
}

size_t port_rank(int32_t port) {
  const std::vector<int32_t> &ports = ports_by_name();
  return static_cast<size_t>(std::find(ports.begin(), ports.end(), port) - ports.begin());
}

}  // namespace vchipctl
