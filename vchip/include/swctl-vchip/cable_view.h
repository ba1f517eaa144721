// SPDX-License-Identifier: MIT
/**
 * @file cable_view.h
 * @brief A view of the wires. See view.h.
 */
#ifndef SWCTL_VCHIP_CABLE_VIEW_H
#define SWCTL_VCHIP_CABLE_VIEW_H

#include <swctl/types.h>

#include <vector>

namespace vchip {

struct PairView {
  uint32_t faults;  // VCHIP_FAULT_*
  uint32_t length;  // in centimetres
};
// The wires of a front port. The CPU port throws like one that is not there.
struct CableView {
  std::vector<PairView> pairs;  // A to D
  bool tested;
};
SWCTL_API CableView cable(uint32_t unit, int32_t port);

}  // namespace vchip

#endif
