// SPDX-License-Identifier: MIT
// The IP multicast table, and what becomes of frames that are not in it.
#ifndef VCHIP_MCAST_MCAST_IP_BLOCK_H
#define VCHIP_MCAST_MCAST_IP_BLOCK_H

#include <swctl-vchip/vchip.h>
#include <swctl/platform/mcast_records.h>

#include <array>
#include <cstdint>

#include "common/frame_action.h"
#include "common/numbers.h"

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kIpMcastEntries = 256;
inline constexpr uint32_t kIp6McastEntries = 128;
inline constexpr uint32_t kMaxMcastMode = 1;

// RFC 5771 and RFC 4291, 2.7.
constexpr bool is_group(uint32_t address) {
  return address >> 28 == 0xe;
}
constexpr bool is_group(const chip_ip6_address &address) {
  return address.bytes[0] == 0xff;
}

// Whether the two are of the same source and group of the same VLAN.
bool same_key(const chip_ip_mcast_entry &one, const chip_ip_mcast_entry &other);
bool same_key(const chip_ip6_mcast_entry &one, const chip_ip6_mcast_entry &other);

// A place of a table. A killed call leaves it empty or whole.
template <typename Entry>
struct McastPlace {
  uint32_t used;
  Entry entry;
};

class McastIpBlock {
 public:
  using MissActions = std::array<FrameAction, kMissTypes>;
  template <typename Entry, uint32_t size>
  using Table = std::array<McastPlace<Entry>, size>;

  static constexpr uint32_t kLayout = 1;
  void power_on();
  void repair() {}  // a place is empty while it is written
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  const Table<chip_ip_mcast_entry, kIpMcastEntries> &ip() const { return ip_; }
  const Table<chip_ip6_mcast_entry, kIp6McastEntries> &ip6() const { return ip6_; }

  // Each answers 0 or why not.
  int32_t add(const chip_ip_mcast_entry &entry);
  int32_t set(const chip_ip_mcast_entry &entry);
  int32_t remove(const chip_ip_mcast_entry &key);
  int32_t add(const chip_ip6_mcast_entry &entry);
  int32_t remove(const chip_ip6_mcast_entry &key);

  uint32_t ip_mode() const { return ip_mode_; }
  void set_ip_mode(uint32_t mode) { ip_mode_ = mode; }
  uint32_t ip6_mode() const { return ip6_mode_; }
  void set_ip6_mode(uint32_t mode) { ip6_mode_ = mode; }
  const MissActions &miss_actions(int32_t port) const {
    return miss_actions_[static_cast<size_t>(port)];
  }
  void set_miss_action(int32_t port, uint32_t type, FrameAction action) {
    miss_actions_[static_cast<size_t>(port)][type] = action;
  }

 private:
  Table<chip_ip_mcast_entry, kIpMcastEntries> ip_;
  Table<chip_ip6_mcast_entry, kIp6McastEntries> ip6_;
  uint32_t ip_mode_;
  uint32_t ip6_mode_;
  std::array<MissActions, VCHIP_PORTS> miss_actions_;
};

}  // namespace vchip

#endif
