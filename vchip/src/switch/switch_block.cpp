// SPDX-License-Identifier: MIT
#include "switch/switch_block.h"

#include <algorithm>

#include "common/sound.h"

namespace vchip {
namespace {

constexpr uint32_t kPowerOnLength = 1518;

}  // namespace

void SwitchBlock::power_on() {
  tag_counts_ = 1;
  max_length_.fill(kPowerOnLength);
}

bool SwitchBlock::sound() const {
  return std::ranges::all_of(max_length_,
                             [](uint32_t length) {
                               return length >= kMinFrameLength && length <= kMaxFrameLength;
                             }) &&
         are_at_most(cpu_format_, kMaxCpuFormat);
}

}  // namespace vchip
