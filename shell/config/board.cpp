// SPDX-License-Identifier: MIT
#include "config/board.h"

#include <algorithm>

namespace swsh {

Board::Board() : front_(front_ports()) {
  all_interfaces_.push_back(kCpuInterface);
  for (const Port &port : front_) {
    front_interfaces_.push_back(port.interface);
    all_interfaces_.push_back(port.interface);
  }
}

Port Board::port(int64_t interface) const {
  const auto found = std::ranges::find(front_, interface, &Port::interface);
  return found == front_.end() ? port_of(interface) : *found;
}

void Board::expect(const std::vector<int64_t> &interfaces) const {
  for (const int64_t interface : interfaces) port(interface);
}

std::vector<int64_t> Board::interfaces_of(uint32_t chip_ports) const {
  return swsh::interfaces_of(interfaces_, chip_ports);
}

}  // namespace swsh
