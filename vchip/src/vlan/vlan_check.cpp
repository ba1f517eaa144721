// SPDX-License-Identifier: MIT
#include "document/findings.h"
#include "vlan/vlan_block.h"

namespace vchip {

// What a VLAN that was destroyed had stays, so it is looked at as well.
void VlanBlock::check(Findings &findings) const {
  findings.each("vlans", vlans_, [&](const Vlan &vlan, size_t vid) {
    findings.at_most("exists", vlan.exists, vid >= kFirstVlan && vid <= kLastVlan ? 1 : 0);
    findings.ports("member", vlan.member);
    findings.ports("untagged", vlan.untagged);
    findings.at_most("stg", vlan.stg, kInstances - 1);
  });
  findings.each("pvids", pvids_, [&](const uint32_t &pvid, size_t) {
    findings.in("", pvid, kFirstVlan, kLastVlan);
  });
}

}  // namespace vchip
