// SPDX-License-Identifier: MIT
// The VLAN table of a unit, and the default VLANs of its ports.
#ifndef VCHIP_VLAN_VLAN_BLOCK_H
#define VCHIP_VLAN_VLAN_BLOCK_H

#include <swctl-vchip/vchip.h>

#include <cstdint>

#include "common/numbers.h"

namespace vchip {

class Dump;
class Findings;

struct Vlan {
  uint32_t exists;
  uint32_t member;    // bit p is chip port p
  uint32_t untagged;  // of the members, those that send it without a tag
  uint32_t stg;       // spanning-tree instance that its frames obey
};

class VlanBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on();
  void repair() {}  // an entry is taken away before it changes hands
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  const Vlan &vlan(uint32_t vid) const { return vlans_[vid]; }
  bool exists(uint32_t vid) const { return vlans_[vid].exists != 0; }
  // A new VLAN has no ports and obeys instance 0.
  void create(uint32_t vid);
  void destroy(uint32_t vid);
  // Every VLAN; then there may be the default one again, as after power-on.
  void destroy_all(bool restore_default);
  void add_port(uint32_t vid, int32_t port, bool untagged);
  void remove_port(uint32_t vid, int32_t port);
  void set_ports(uint32_t vid, uint32_t member, uint32_t untagged);
  void set_stg(uint32_t vid, uint32_t stg) { vlans_[vid].stg = stg; }

  uint32_t pvid(int32_t port) const { return pvids_[port]; }
  void set_pvid(int32_t port, uint32_t vid) { pvids_[port] = vid; }

 private:
  Vlan vlans_[kVlanIds];
  uint32_t pvids_[VCHIP_PORTS];
};

}  // namespace vchip

#endif
