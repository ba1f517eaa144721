// SPDX-License-Identifier: MIT
// What ports do about new source addresses.
#ifndef VCHIP_FORWARD_LEARNING_BLOCK_H
#define VCHIP_FORWARD_LEARNING_BLOCK_H

#include <swctl-vchip/vchip.h>

#include <cstdint>

namespace vchip {

class Dump;

inline constexpr uint32_t kLastLearningMode = 2;
inline constexpr uint32_t kLastNewAddressAction = 3;

struct NewAddress {
  uint32_t mode;
  uint32_t action;
};

class LearningBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void reset();
  void repair() {}  // single words, each valid on its own
  bool sound() const;
  void dump(const char *name, Dump &unit) const;

  const NewAddress &port(int32_t port) const { return ports_[port]; }
  void set_port(int32_t port, const NewAddress &pair) { ports_[port] = pair; }

 private:
  NewAddress ports_[VCHIP_PORTS];
};

}  // namespace vchip

#endif
