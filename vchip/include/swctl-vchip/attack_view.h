// SPDX-License-Identifier: MIT
/**
 * @file attack_view.h
 * @brief A view of attack prevention. See view.h.
 */
#ifndef SWCTL_VCHIP_ATTACK_VIEW_H
#define SWCTL_VCHIP_ATTACK_VIEW_H

#include <swctl/types.h>

#include <vector>

namespace vchip {

struct AttackView {
  uint32_t protected_ports;      // bit p is chip port p
  std::vector<uint32_t> action;  // by attack type
};
SWCTL_API AttackView attacks(uint32_t unit);

}  // namespace vchip

#endif
