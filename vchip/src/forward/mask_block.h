// SPDX-License-Identifier: MIT
// The table of forwarding port masks, which frames to unknown addresses name
// by an index.
#ifndef VCHIP_FORWARD_MASK_BLOCK_H
#define VCHIP_FORWARD_MASK_BLOCK_H

#include <swctl-vchip/vchip.h>

#include <cstdint>

namespace vchip {

class Dump;

inline constexpr uint32_t kForwardMasks = 512;
// The first places are for flooding and hold every port after power-on.
inline constexpr uint32_t kFloodMasks = 8;

struct ForwardMask {
  uint32_t ports;
  uint32_t extra;  // kept, without a meaning
};

class MaskBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void reset();
  void repair() {}  // single words, each valid on its own
  void dump(const char *name, Dump &unit) const;

  // For an index below kForwardMasks.
  const ForwardMask &mask(uint32_t index) const { return masks_[index]; }
  void set_ports(uint32_t index, uint32_t ports) { masks_[index].ports = ports; }

 private:
  ForwardMask masks_[kForwardMasks];
};

}  // namespace vchip

#endif
