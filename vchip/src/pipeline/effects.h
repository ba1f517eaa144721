// SPDX-License-Identifier: MIT
// The one place where a frame changes the chip.
#ifndef VCHIP_PIPELINE_EFFECTS_H
#define VCHIP_PIPELINE_EFFECTS_H

#include "pipeline/way.h"
#include "unit/state.h"

namespace vchip {

// Does what the steps of a way asked for: counts, learns, takes from buckets.
// `unit` is the one that the way has read.
void apply(const Way &way, Unit &unit);

// Counts a frame that was sent, or received.
void count_sent(Unit &unit, int32_t port, Cast cast, uint32_t wire);

}  // namespace vchip

#endif
