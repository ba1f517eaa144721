// SPDX-License-Identifier: MIT
// What sound() of a block is made of: an image may hold any bytes.
#ifndef VCHIP_COMMON_SOUND_H
#define VCHIP_COMMON_SOUND_H

#include <algorithm>
#include <cstdint>

#include "common/numbers.h"

namespace vchip {

// A mask of ports that the unit has.
constexpr bool is_ports(uint32_t mask) {
  return (mask & ~kAllPorts) == 0;
}

template <typename Words>
constexpr bool are_ports(const Words &masks) {
  return std::ranges::all_of(masks, is_ports);
}

template <typename Words>
constexpr bool are_at_most(const Words &words, uint32_t limit) {
  return std::ranges::all_of(words, [=](uint32_t word) { return word <= limit; });
}

}  // namespace vchip

#endif
