// SPDX-License-Identifier: MIT
// The bytes of a frame as it leaves a port.
#ifndef VCHIP_PIPELINE_EDIT_H
#define VCHIP_PIPELINE_EDIT_H

#include "pipeline/way.h"

namespace vchip {

// Room for the longest frame and the tags that it can gain.
inline constexpr uint32_t kLargestSent = kLongestFrame + 2 * kTagBytes;

// The frame as it leaves the port: as it came, if nothing in it changes, or written to `to`.
Frame write_frame(const Way &way, int32_t port, uint8_t *to);

// The queue of a frame that is switched, and of the processor's copy.
uint32_t queue_of(const Way &way);

}  // namespace vchip

#endif
