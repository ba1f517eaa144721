// SPDX-License-Identifier: MIT
// How a trunk's frames are shared among its members.
#ifndef VCHIP_PIPELINE_TRUNK_HASH_H
#define VCHIP_PIPELINE_TRUNK_HASH_H

#include "pipeline/way.h"

namespace vchip {

// Of the fields that are chosen. A field that the frame lacks counts as 0.
uint32_t trunk_hash(const Way &way);

// The port with this place among those of a mask, from the lowest, as a mask.
uint32_t nth_port(uint32_t ports, uint32_t place);

}  // namespace vchip

#endif
