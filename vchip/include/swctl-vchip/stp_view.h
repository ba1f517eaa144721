// SPDX-License-Identifier: MIT
/**
 * @file stp_view.h
 * @brief A view of spanning tree and traps: what the chip holds. See
 *        view.h.
 */
#ifndef SWCTL_VCHIP_STP_VIEW_H
#define SWCTL_VCHIP_STP_VIEW_H

#include <swctl/types.h>

#include <vector>

namespace vchip {

// A spanning-tree instance that exists, with the state of each chip port: 0
// disabled, 1 blocking, 2 learning, 3 forwarding. Its VLANs are those of
// vlans() with that stg.
struct StpView {
  uint32_t instance;
  std::vector<uint32_t> states;

  bool operator==(const StpView &) const = default;
};
// Every instance that exists, rising.
SWCTL_API std::vector<StpView> stp_instances(uint32_t unit);

// What becomes of frames for the processor. Actions: 0 forward, 1 drop, 2 trap,
// 3 copy.
struct TrapView {
  std::vector<uint32_t> frame_action;          // by frame type
  std::vector<uint32_t> rma_group_action;      // by group of reserved multicast addresses
  std::vector<uint32_t> passes_blocked_ports;  // by frame type of the bypass

  bool operator==(const TrapView &) const = default;
};
SWCTL_API TrapView traps(uint32_t unit);

// The action of a port by frame type.
SWCTL_API std::vector<uint32_t> port_traps(uint32_t unit, int32_t port);

}  // namespace vchip

#endif
