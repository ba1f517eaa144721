// SPDX-License-Identifier: MIT
// Where frames may go: isolation of ports, and which mask takes the frames
// that the address table does not know.
#ifndef VCHIP_FORWARD_FLOOD_BLOCK_H
#define VCHIP_FORWARD_FLOOD_BLOCK_H

#include <swctl-vchip/vchip.h>

#include <array>
#include <cstdint>

#include "common/numbers.h"

namespace vchip {

class Dump;
class Findings;

class FloodBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on();
  void repair() {}  // single words, each valid on its own
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  uint32_t isolation(int32_t port) const { return isolation_[port]; }
  void set_isolation(int32_t port, uint32_t mask) { isolation_[port] = mask; }
  // Per type of lookup miss the place of its ports in the MaskBlock.
  const std::array<uint32_t, kMissTypes> &miss_index() const { return miss_index_; }
  void set_miss_index(uint32_t type, uint32_t index) { miss_index_[type] = index; }

 private:
  uint32_t isolation_[VCHIP_PORTS];
  std::array<uint32_t, kMissTypes> miss_index_;
};

}  // namespace vchip

#endif
