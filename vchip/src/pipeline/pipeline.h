// SPDX-License-Identifier: MIT
// The steps of the way in their order.
#ifndef VCHIP_PIPELINE_PIPELINE_H
#define VCHIP_PIPELINE_PIPELINE_H

#include "pipeline/way.h"

namespace vchip {

// From the port to the ports that the frame leaves by. What the steps ask for
// is in the way afterwards.
void walk(Way &way);

}  // namespace vchip

#endif
