// SPDX-License-Identifier: MIT
/**
 * @file rate_view.h
 * @brief A view of rates and storm control. See view.h.
 */
#ifndef SWCTL_VCHIP_RATE_VIEW_H
#define SWCTL_VCHIP_RATE_VIEW_H

#include <swctl/types.h>

#include <vector>

namespace vchip {

// What holds for a whole unit.
struct RateView {
  uint32_t storm_mode;
  std::vector<uint32_t> storm_burst;  // by storm type
};
SWCTL_API RateView rates(uint32_t unit);

struct StormView {
  bool controlled;
  uint32_t selection;
  uint32_t rate;
  bool exceeded;
};
// One port. Bandwidths are in units of 16 kbit/s.
struct PortRateView {
  bool ingress_limited;
  int32_t ingress_rate;
  bool egress_limited;
  int32_t egress_rate;
  std::vector<StormView> storm;  // by storm type
};
SWCTL_API PortRateView port_rates(uint32_t unit, int32_t port);

}  // namespace vchip

#endif
