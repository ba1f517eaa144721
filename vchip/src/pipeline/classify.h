// SPDX-License-Identifier: MIT
#ifndef VCHIP_PIPELINE_CLASSIFY_H
#define VCHIP_PIPELINE_CLASSIFY_H

#include "pipeline/way.h"

namespace vchip {

// Finds the tags that the port knows, and what follows them.
void read_tags(Way &way);

}  // namespace vchip

#endif
