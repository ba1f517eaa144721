// SPDX-License-Identifier: MIT
// What ports do about new source addresses.
#ifndef VCHIP_FORWARD_LEARNING_BLOCK_H
#define VCHIP_FORWARD_LEARNING_BLOCK_H

#include <swctl-vchip/vchip.h>

#include <cstdint>

#include "common/frame_action.h"

namespace vchip {

class Dump;
class Findings;

// Who enters a new address: the chip, at once; software, which is asked; nobody.
enum LearningMode : uint32_t { kLearnAtOnce, kLearnBySoftware, kLearnNothing };

struct NewAddress {
  uint32_t mode;
  FrameAction action;  // on the frame that it came with
};

class LearningBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on();
  void repair() {}  // single words, each valid on its own
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  const NewAddress &port(int32_t port) const { return ports_[port]; }
  void set_port(int32_t port, const NewAddress &pair) { ports_[port] = pair; }

 private:
  NewAddress ports_[VCHIP_PORTS];
};

}  // namespace vchip

#endif
