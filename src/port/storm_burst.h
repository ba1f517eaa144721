// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_PORT_STORM_BURST_H
#define SWCTL_SRC_PORT_STORM_BURST_H

#include <swctl/platform/sdk.h>

namespace swctl {

// Programs the burst sizes that the storm types 2, 3 and 4 start with.
inline void set_default_bursts(uint32_t unit) {
  constexpr uint32_t kFirstType = 2;
  constexpr uint32_t kLastType = 4;
  constexpr uint32_t kBurstSize = 100;
  for (uint32_t type = kFirstType; type <= kLastType; ++type) {
    rtk_rate_stormControlBurstSize_set(unit, type, kBurstSize);
  }
}

}  // namespace swctl

#endif
