// SPDX-License-Identifier: MIT
#include "rate/rate_block.h"

namespace vchip {

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void RateBlock::reset() {
  storm_mode_ = kCountPackets;
  storm_burst_.fill(0);
  Port power_on = {{0, kMaxBandwidth}, {0, kMaxBandwidth}, {}};
  for (Storm &storm : power_on.storm) storm.rate = kMaxStormRate;
  for (Port &port : ports_) port = power_on;
}

}  // namespace vchip
