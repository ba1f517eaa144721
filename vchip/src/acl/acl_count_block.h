// SPDX-License-Identifier: MIT
// Packets and bytes that rules counted.
#ifndef VCHIP_ACL_ACL_COUNT_BLOCK_H
#define VCHIP_ACL_ACL_COUNT_BLOCK_H

#include <swctl-vchip/vchip.h>

#include <cstdint>

namespace vchip {

class Dump;
class Findings;

class AclCountBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on() {}  // all zero
  // A count that was interrupted may have one half of its new value, as on a
  // chip that is read while it counts.
  void repair() {}
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  uint64_t packets(uint32_t counter) const { return packets_[counter]; }
  uint64_t bytes(uint32_t counter) const { return bytes_[counter]; }
  void clear_packets(uint32_t counter) { packets_[counter] = 0; }
  void clear_bytes(uint32_t counter) { bytes_[counter] = 0; }
  void count(uint32_t counter, uint64_t packets, uint64_t bytes);

 private:
  uint64_t packets_[VCHIP_ACL_COUNTERS];
  uint64_t bytes_[VCHIP_ACL_COUNTERS];
};

}  // namespace vchip

#endif
