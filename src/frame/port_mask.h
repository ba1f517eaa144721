// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_FRAME_PORT_MASK_H
#define SWCTL_SRC_FRAME_PORT_MASK_H

#include <swctl/types.h>

namespace swctl {

// A chip port's bit in the SDK's port mask, which is one word; a port that the
// mask has no place for has no bit.
constexpr uint32_t bit_in_mask(int32_t port) {
  return port >= 0 && port < 32 ? uint32_t{1} << port : 0;
}

// The same for a number that nobody has checked, of the caller's or of the
// adapter's: one that is no port falls on some bit, as the chip's own shift
// would let it, and the SDK has its say about the mask.
constexpr uint32_t unchecked_bit_in_mask(int32_t port) {
  return uint32_t{1} << (static_cast<uint32_t>(port) & 31u);
}

// The SDK's mask of a bitmap of chip ports, and back.
constexpr uint32_t mask_of(const user_pbmp_t &ports) {
  return ports.word[0];
}
constexpr user_pbmp_t bitmap_of(uint32_t mask) {
  return {{mask}};
}

}  // namespace swctl

#endif
