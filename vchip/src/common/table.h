// SPDX-License-Identifier: MIT
// Reading a table entry by entry, as the platform's optional functions do.
#ifndef VCHIP_COMMON_TABLE_H
#define VCHIP_COMMON_TABLE_H

#include <swctl-vchip/vchip.h>

#include <cstdint>

namespace vchip {

// An index from which on a table is searched; past its end there is nothing.
constexpr int32_t search_from(int32_t from) {
  return from >= 0 ? 0 : VCHIP_E_INDEX;
}

// The first index from `from` on, and below `end`, that is used; -1 if none.
template <typename Used>
int32_t first_used(int32_t from, uint32_t end, Used used) {
  for (uint32_t index = static_cast<uint32_t>(from); index < end; ++index)
    if (used(index)) return static_cast<int32_t>(index);
  return -1;
}

}  // namespace vchip

#endif
