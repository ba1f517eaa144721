// SPDX-License-Identifier: MIT
// Spanning-tree instances and the states of the ports in them.
#ifndef VCHIP_STP_STP_BLOCK_H
#define VCHIP_STP_STP_BLOCK_H

#include <swctl-vchip/vchip.h>

#include <array>
#include <cstdint>

#include "common/numbers.h"

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kCommonInstance = 0;  // always there

enum StpState : uint32_t { kStpDisabled, kStpBlocking, kStpLearning, kStpForwarding };

struct StpInstance {
  uint32_t exists;
  std::array<uint32_t, VCHIP_PORTS> states;
};

class StpBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on();
  void repair() {}  // an instance comes into being when its states are set
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  bool exists(uint32_t instance) const {
    return instance < kInstances && instances_[instance].exists != 0;
  }
  // In a new instance every port is disabled.
  void create(uint32_t instance);
  void destroy(uint32_t instance);
  uint32_t state(uint32_t instance, int32_t port) const {
    return instances_[instance].states[static_cast<size_t>(port)];
  }
  void set_state(uint32_t instance, int32_t port, uint32_t state) {
    instances_[instance].states[static_cast<size_t>(port)] = state;
  }

 private:
  void make(uint32_t instance, uint32_t state);

  std::array<StpInstance, kInstances> instances_;
};

}  // namespace vchip

#endif
