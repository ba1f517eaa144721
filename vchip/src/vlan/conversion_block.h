// SPDX-License-Identifier: MIT
// Conversion of VLAN IDs: entries for leaving frames, and what the blocks of
// the ingress table are used for.
#ifndef VCHIP_VLAN_CONVERSION_BLOCK_H
#define VCHIP_VLAN_CONVERSION_BLOCK_H

#include <swctl/platform/vlan_records.h>

#include <array>
#include <cstdint>

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kEgressEntries = 512;
inline constexpr uint32_t kIngressBlocks = 3;
inline constexpr uint32_t kMaxBlockMode = 2;

class ConversionBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on();
  void repair() {}  // an entry is invalid while it is written
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  const chip_vlan_egress_entry &egress(uint32_t index) const { return egress_[index]; }
  void set_egress(uint32_t index, const chip_vlan_egress_entry &entry);
  const std::array<uint32_t, kIngressBlocks> &modes() const { return modes_; }
  void set_mode(uint32_t block, uint32_t mode) { modes_[block] = mode; }

 private:
  chip_vlan_egress_entry egress_[kEgressEntries];
  std::array<uint32_t, kIngressBlocks> modes_;
};

}  // namespace vchip

#endif
