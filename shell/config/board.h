// SPDX-License-Identifier: MIT
// The interfaces of the board, asked for once.
#ifndef SWCTL_SHELL_CONFIG_BOARD_H
#define SWCTL_SHELL_CONFIG_BOARD_H

#include <cstdint>
#include <vector>

#include "chip/ports.h"

namespace swsh {

class Board {
 public:
  Board();

  const Interfaces &interfaces() const { return interfaces_; }
  const std::vector<Port> &front() const { return front_; }
  // Interface numbers: the front ports', and those with the processor's.
  const std::vector<int64_t> &front_interfaces() const { return front_interfaces_; }
  const std::vector<int64_t> &all_interfaces() const { return all_interfaces_; }

  // Throws no_such_port() for an interface that the board does not have.
  Port port(int64_t interface) const;
  void expect(const std::vector<int64_t> &interfaces) const;

  std::vector<int64_t> interfaces_of(uint32_t chip_ports) const;

 private:
  Interfaces interfaces_;
  std::vector<Port> front_;
  std::vector<int64_t> front_interfaces_;
  std::vector<int64_t> all_interfaces_;
};

}  // namespace swsh

#endif
