// SPDX-License-Identifier: MIT
#include "vlan/vlan_block.h"

#include <algorithm>
#include <atomic>

#include "common/sound.h"

namespace vchip {
namespace {

// A killed call must not leave a VLAN with half of its ports: the mark is
// cleared before and set after everything else.
void set_exists(Vlan &vlan, uint32_t exists) {
  std::atomic_ref<uint32_t>(vlan.exists).exchange(exists);
}

void make(Vlan &vlan, uint32_t ports) {
  set_exists(vlan, 0);
  vlan.member = ports;
  vlan.untagged = ports;
  vlan.stg = 0;
  set_exists(vlan, 1);
}

bool is_good_vlan(const Vlan &vlan) {
  if (vlan.exists == 0) return true;
  return is_ports(vlan.member) && is_ports(vlan.untagged) && vlan.stg < kInstances;
}

}  // namespace

void VlanBlock::power_on() {
  make(vlans_[kDefaultVlan], kAllPorts);
  for (uint32_t &pvid : pvids_) pvid = kDefaultVlan;
}

bool VlanBlock::sound() const {
  return std::ranges::all_of(vlans_, is_good_vlan) && are_at_most(pvids_, kVlanIds - 1);
}

void VlanBlock::create(uint32_t vid) {
  make(vlans_[vid], 0);
}

void VlanBlock::destroy(uint32_t vid) {
  set_exists(vlans_[vid], 0);
}

void VlanBlock::destroy_all(bool restore_default) {
  for (Vlan &vlan : vlans_)
    if (vlan.exists != 0) set_exists(vlan, 0);
  if (restore_default) make(vlans_[kDefaultVlan], kAllPorts);
}

void VlanBlock::add_port(uint32_t vid, int32_t port, bool untagged) {
  const Vlan &vlan = vlans_[vid];
  const uint32_t others = vlan.untagged & ~port_bit(port);
  set_ports(vid, vlan.member | port_bit(port), untagged ? others | port_bit(port) : others);
}

void VlanBlock::remove_port(uint32_t vid, int32_t port) {
  const Vlan &vlan = vlans_[vid];
  set_ports(vid, vlan.member & ~port_bit(port), vlan.untagged & ~port_bit(port));
}

void VlanBlock::set_ports(uint32_t vid, uint32_t member, uint32_t untagged) {
  vlans_[vid].member = member;
  vlans_[vid].untagged = untagged;
}

}  // namespace vchip
