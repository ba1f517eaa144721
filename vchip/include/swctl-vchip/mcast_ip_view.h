// SPDX-License-Identifier: MIT
/**
 * @file mcast_ip_view.h
 * @brief A view of IP multicast: what the chip holds. See view.h.
 */
#ifndef SWCTL_VCHIP_MCAST_IP_VIEW_H
#define SWCTL_VCHIP_MCAST_IP_VIEW_H

#include <swctl/types.h>

#include <string>
#include <vector>

namespace vchip {

// An entry, its addresses in the usual notation. In the mask, bit p is chip
// port p.
struct McastIpView {
  uint32_t vid;
  std::string source;
  std::string group;
  uint32_t ports;

  bool operator==(const McastIpView &) const = default;
};
// In the order of their places, which is the order in which they were added
// while none was deleted.
SWCTL_API std::vector<McastIpView> ip_mcast_entries(uint32_t unit);
SWCTL_API std::vector<McastIpView> ip6_mcast_entries(uint32_t unit);

struct McastModeView {
  uint32_t ip_mode;
  uint32_t ip6_mode;
  std::vector<std::vector<uint32_t>> miss_actions;  // by chip port, then by lookup type

  bool operator==(const McastModeView &) const = default;
};
SWCTL_API McastModeView mcast_modes(uint32_t unit);

}  // namespace vchip

#endif
