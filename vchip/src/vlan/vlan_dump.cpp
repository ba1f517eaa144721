// SPDX-License-Identifier: MIT
#include <vector>

#include "document/dump.h"
#include "vlan/vlan_block.h"

namespace vchip {

void VlanBlock::dump(const char *name, Dump &unit) const {
  std::vector<uint32_t> vids;
  for (uint32_t vid = 0; vid < kVlanIds; ++vid)
    if (exists(vid)) vids.push_back(vid);
  unit.object(name, [&](Dump &block) {
    block.objects("vlans", vids.size(), [&](Dump &entry, size_t index) {
      const Vlan &vlan = vlans_[vids[index]];
      entry.number("vid", vids[index]);
      entry.ports("member", vlan.member);
      entry.ports("untagged", vlan.untagged);
      entry.number("stg", vlan.stg);
    });
    block.numbers("pvid", {pvids_, pvids_ + VCHIP_PORTS});
  });
}

}  // namespace vchip
