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

}  // namespace swctl

#endif
