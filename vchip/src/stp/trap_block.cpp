// SPDX-License-Identifier: MIT
#include "stp/trap_block.h"

#include <algorithm>

namespace vchip {

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void TrapBlock::power_on() {
  actions_.fill(FrameAction::drop);
  for (Actions &actions : port_actions_) actions.fill(FrameAction::drop);
  rma_groups_.fill(FrameAction::forward);
}

bool TrapBlock::sound() const {
  return are_known(actions_) && are_known(rma_groups_) &&
         std::ranges::all_of(port_actions_, are_known<kFrameTypes>);
}

}  // namespace vchip
