// SPDX-License-Identifier: MIT
/**
 * @file counter_view.h
 * @brief A view of the counters. See view.h.
 */
#ifndef SWCTL_VCHIP_COUNTER_VIEW_H
#define SWCTL_VCHIP_COUNTER_VIEW_H

#include <swctl/types.h>

#include <vector>

namespace vchip {

// All counters of a port, by identifier.
SWCTL_API std::vector<uint64_t> counters(uint32_t unit, int32_t port);

}  // namespace vchip

#endif
