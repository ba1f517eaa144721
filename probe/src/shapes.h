// SPDX-License-Identifier: MIT
// The records that stand in the lists of calls, each described once; see
// Shape in shape.h. The lists hold plain integers so far.
#ifndef SWCTL_PROBE_SHAPES_H
#define SWCTL_PROBE_SHAPES_H

#include "shape.h"

#endif
