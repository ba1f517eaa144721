// SPDX-License-Identifier: MIT
#include "switch/switch_block.h"

namespace vchip {
namespace {

constexpr uint32_t kPowerOnLength = 1518;

}  // namespace

void SwitchBlock::reset() {
  tag_counts_ = 1;
  max_length_.fill(kPowerOnLength);
  cpu_format_.fill(0);
}

}  // namespace vchip
