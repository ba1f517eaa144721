// SPDX-License-Identifier: MIT
#include "switch/defaults_block.h"

namespace vchip {

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void DefaultsBlock::reset() {
  zero_source_learned_ = 1;
  priority_source_ = kMaxPrioritySource;
  meters_count_gap_ = 1;
}

}  // namespace vchip
