// SPDX-License-Identifier: MIT
// Between the caller's port bitmaps and the SDK's port masks.
#ifndef SWCTL_SRC_FRAME_PORTS_H
#define SWCTL_SRC_FRAME_PORTS_H

#include <swctl/types.h>

#include <bit>

namespace swctl {

// Calls visit(n) for every port n in the bitmap, rising.
template <typename Visit>
void each_port(const user_pbmp_t &ports, Visit visit) {
  for (int32_t index = 0; index < USER_PBMP_WORDS; ++index)
    for (uint32_t rest = ports.word[index]; rest != 0; rest &= rest - 1)
      visit(index * 32 + std::countr_zero(rest));
}

// The bit of a chip port in a mask. The adapter's answer is not checked: a
// number that is no port falls on some bit, as the chip's own shift would let
// it, and the SDK has its say about the mask.
constexpr uint32_t port_bit(int32_t port) {
  return 1u << (static_cast<uint32_t>(port) & 31u);
}

}  // namespace swctl

#endif
