// SPDX-License-Identifier: MIT
// The multicast groups of a unit, and the port masks that belong to them: not
// those of forward/mask_block.h.
#ifndef VCHIP_L2_GROUP_BLOCK_H
#define VCHIP_L2_GROUP_BLOCK_H

#include <swctl/platform/l2_records.h>

#include <cstdint>

#include "common/numbers.h"

namespace vchip {

class Dump;
class Findings;

// Index 0 of the port masks belongs to no group, so there is one less of them.
inline constexpr int32_t kGroups = kPortMasks - 1;

class GroupBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on() {}  // all zero
  void repair() {}    // a group is absent while it is written
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  // -1 if there is none.
  int32_t find(uint32_t vid, const uint8_t *mac) const;
  // The first group after the index; -1 if there is none.
  int32_t next(int32_t index) const;
  chip_l2_mcast_entry entry(int32_t index) const;
  bool is_at(int32_t index, uint32_t vid, const uint8_t *mac) const;
  uint32_t ports(int32_t index) const { return masks_[groups_[index].mask]; }
  // The ports of the group that has this port mask; none if there is no such.
  uint32_t ports_of_mask(uint32_t mask) const { return is_free(mask) ? 0 : masks_[mask]; }

  // A new group gets the mask whose index its entry names, or the lowest
  // free one if it names 0 or one in use. Answers a result.
  int32_t add(const chip_l2_mcast_entry &entry);
  int32_t remove(uint32_t vid, const uint8_t *mac);

 private:
  struct Group {
    uint32_t exists;
    uint32_t mask;  // index of its port mask
    uint16_t vid;
    uint8_t mac[SWCTL_MAC_BYTES];
  };

  bool is_free(uint32_t mask) const;
  uint32_t choose_mask(uint32_t wanted) const;

  Group groups_[kGroups];
  uint32_t masks_[kPortMasks];
};

}  // namespace vchip

#endif
