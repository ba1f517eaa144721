// SPDX-License-Identifier: MIT
// What becomes of a frame where a setting says it: of frames for the processor,
// of those with a new source address, and of IP multicast that is not known.
#ifndef VCHIP_COMMON_FRAME_ACTION_H
#define VCHIP_COMMON_FRAME_ACTION_H

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace vchip {

// The numbers are the SDK's.
enum class FrameAction : uint32_t {
  forward,
  drop,
  to_cpu,  // and nowhere else
  copy,    // forwarded, and a copy to the CPU
};

inline constexpr uint32_t kLastFrameAction = static_cast<uint32_t>(FrameAction::copy);

constexpr uint32_t number_of(FrameAction action) {
  return static_cast<uint32_t>(action);
}

// An image may hold any number.
constexpr bool is_known(FrameAction action) {
  return number_of(action) <= kLastFrameAction;
}

template <size_t size>
constexpr bool are_known(const std::array<FrameAction, size> &actions) {
  return std::ranges::all_of(actions, is_known);
}

template <size_t size>
std::vector<uint32_t> numbers_of(const std::array<FrameAction, size> &actions) {
  std::vector<uint32_t> numbers(size);
  std::ranges::transform(actions, numbers.begin(), number_of);
  return numbers;
}

}  // namespace vchip

#endif
