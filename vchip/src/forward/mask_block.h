// SPDX-License-Identifier: MIT
// The forwarding port masks, which lookup misses and the rules' action "redirect
// to ports" name by an index. Groups have masks of their own.
#ifndef VCHIP_FORWARD_MASK_BLOCK_H
#define VCHIP_FORWARD_MASK_BLOCK_H

#include <swctl-vchip/vchip.h>

#include <cstdint>

#include "common/numbers.h"

namespace vchip {

class Dump;
class Findings;

struct ForwardMask {
  uint32_t ports;
  uint32_t extra;  // kept, without a meaning
};

class MaskBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on();
  void repair() {}  // single words, each valid on its own
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  // For an index below kPortMasks.
  const ForwardMask &mask(uint32_t index) const { return masks_[index]; }
  void set_ports(uint32_t index, uint32_t ports) { masks_[index].ports = ports; }

 private:
  ForwardMask masks_[kPortMasks];
};

}  // namespace vchip

#endif
