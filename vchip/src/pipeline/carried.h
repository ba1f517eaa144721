// SPDX-License-Identifier: MIT
// The frames that this process has on their way.
#ifndef VCHIP_PIPELINE_CARRIED_H
#define VCHIP_PIPELINE_CARRIED_H

#include "pipeline/traffic.h"

namespace vchip {

// Those of a unit. The caller holds the chip's lock.
UnitTraffic &carried(uint32_t unit);

}  // namespace vchip

#endif
