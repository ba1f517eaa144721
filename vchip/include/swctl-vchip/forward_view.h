// SPDX-License-Identifier: MIT
/**
 * @file forward_view.h
 * @brief A view of isolation, flooding and learning. See view.h.
 */
#ifndef SWCTL_VCHIP_FORWARD_VIEW_H
#define SWCTL_VCHIP_FORWARD_VIEW_H

#include <swctl/types.h>

#include <vector>

namespace vchip {

// One port. In a mask, bit p is chip port p.
struct ForwardView {
  uint32_t isolation;  // ports that it may send to
  uint32_t learning_mode;
  uint32_t new_address_action;
};
SWCTL_API ForwardView forwarding(uint32_t unit, int32_t port);

// The table of forwarding port masks. Which of them lookup misses use says
// defaults() in defaults_view.h.
SWCTL_API std::vector<uint32_t> forward_masks(uint32_t unit);

}  // namespace vchip

#endif
