// SPDX-License-Identifier: MIT
// Trunks: ports that stand for one link, and what spreads frames over them.
#ifndef VCHIP_MIRROR_TRUNK_TRUNK_BLOCK_H
#define VCHIP_MIRROR_TRUNK_TRUNK_BLOCK_H

#include <array>
#include <cstdint>

#include "common/numbers.h"

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kHashAlgorithms = 2;
inline constexpr uint32_t kHashFields = 0x7f;

// The CPU port is in no trunk.
constexpr bool may_be_members(uint32_t ports) {
  return (ports & ~(kAllPorts & ~kCpuPortBit)) == 0;
}

class TrunkBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on();
  void repair() {}  // single words, each valid on its own
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  const std::array<uint32_t, kTrunkGroups> &members() const { return members_; }
  // Whether one of these ports is in another trunk.
  bool taken(uint32_t trunk, uint32_t ports) const;
  void set_members(uint32_t trunk, uint32_t ports) { members_[trunk] = ports; }
  const std::array<uint32_t, kHashAlgorithms> &hash_fields() const { return hash_fields_; }
  void set_hash_fields(uint32_t algorithm, uint32_t fields) { hash_fields_[algorithm] = fields; }

 private:
  std::array<uint32_t, kTrunkGroups> members_;  // bit p is chip port p
  std::array<uint32_t, kHashAlgorithms> hash_fields_;
};

}  // namespace vchip

#endif
