// SPDX-License-Identifier: MIT
/**
 * @file mirror_trunk_view.h
 * @brief A view of mirror groups and trunks: what the chip holds. See
 *        view.h.
 */
#ifndef SWCTL_VCHIP_MIRROR_TRUNK_VIEW_H
#define SWCTL_VCHIP_MIRROR_TRUNK_VIEW_H

#include <swctl/types.h>

#include <vector>

namespace vchip {

/** Words of a mirror group. */
inline constexpr uint32_t kMirrorWords = 15;

// The fifteen words of each mirror group: 0 enable, 1 mirroring port, 2 and 3
// the masks of ports mirrored where they receive and where they send, 6, 11
// (the CPU port is mirrored), 14 (flows are mirrored); the rest has no name.
SWCTL_API std::vector<std::vector<uint32_t>> mirror_groups(uint32_t unit);

struct TrunkView {
  std::vector<uint32_t> members;      // by trunk; bit p is chip port p
  std::vector<uint32_t> hash_fields;  // by distribution algorithm

  bool operator==(const TrunkView &) const = default;
};
SWCTL_API TrunkView trunks(uint32_t unit);

}  // namespace vchip

#endif
