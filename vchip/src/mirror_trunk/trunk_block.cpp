// SPDX-License-Identifier: MIT
#include "mirror_trunk/trunk_block.h"

#include <algorithm>

#include "common/sound.h"

namespace vchip {

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void TrunkBlock::power_on() {
  hash_fields_.fill(1);
}

bool TrunkBlock::sound() const {
  return std::ranges::all_of(members_, may_be_members) && are_at_most(hash_fields_, kHashFields);
}

bool TrunkBlock::taken(uint32_t trunk, uint32_t ports) const {
  for (uint32_t other = 0; other < kTrunkGroups; ++other)
    if (other != trunk && (members_[other] & ports) != 0) return true;
  return false;
}

}  // namespace vchip
