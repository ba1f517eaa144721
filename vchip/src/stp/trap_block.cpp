// SPDX-License-Identifier: MIT
#include "stp/trap_block.h"

#include <algorithm>

namespace vchip {

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void TrapBlock::reset() {
  actions_.fill(kTrapDrop);
  for (Actions &actions : port_actions_) actions.fill(kTrapDrop);
  rma_groups_.fill(kTrapForward);
  bypass_.fill(0);
}

bool TrapBlock::sound() const {
  const auto all_known = [](const auto &actions) {
    return std::ranges::all_of(actions, [](uint32_t action) { return action <= kTrapCopy; });
  };
  return all_known(actions_) && std::ranges::all_of(port_actions_, all_known) &&
         all_known(rma_groups_);
}

}  // namespace vchip
