// SPDX-License-Identifier: MIT
/**
 * @file defaults_view.h
 * @brief A view of a unit's start-up settings. See view.h.
 */
#ifndef SWCTL_VCHIP_DEFAULTS_VIEW_H
#define SWCTL_VCHIP_DEFAULTS_VIEW_H

#include <swctl/types.h>

#include <vector>

namespace vchip {

struct DefaultsView {
  bool zero_source_learned;
  std::vector<uint32_t> flood_mask_index;  // by lookup type
  uint32_t priority_source;
  bool meters_count_gap;

  bool operator==(const DefaultsView &) const = default;
};
SWCTL_API DefaultsView defaults(uint32_t unit);

}  // namespace vchip

#endif
