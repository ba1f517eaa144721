// SPDX-License-Identifier: MIT
// Who hears of the frames that are dropped.
#ifndef VCHIP_PIPELINE_LOSSES_H
#define VCHIP_PIPELINE_LOSSES_H

#include "pipeline/way.h"

namespace vchip {

// What the frames of a unit are told to; null if nobody asked. The caller holds the
// chip's lock.
Listener *loss_listener(uint32_t unit);

}  // namespace vchip

#endif
