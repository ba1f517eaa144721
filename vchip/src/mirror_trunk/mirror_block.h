// SPDX-License-Identifier: MIT
// Mirror groups: what is copied, and to where.
#ifndef VCHIP_MIRROR_TRUNK_MIRROR_BLOCK_H
#define VCHIP_MIRROR_TRUNK_MIRROR_BLOCK_H

#include <swctl/platform/mirror_records.h>

#include <array>
#include <cstdint>

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kMirrorGroups = 4;

class MirrorBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on() {}  // all zero
  void repair() {}    // a group is disabled while it is written
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  const chip_mirror_entry &group(uint32_t group) const { return groups_[group]; }
  void set_group(uint32_t group, const chip_mirror_entry &entry);

 private:
  std::array<chip_mirror_entry, kMirrorGroups> groups_;
};

}  // namespace vchip

#endif
