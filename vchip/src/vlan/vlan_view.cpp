// SPDX-License-Identifier: MIT
#include <swctl-vchip/vlan_view.h>

#include "chip/viewing.h"

namespace vchip {

std::vector<VlanView> vlans(uint32_t unit) {
  Viewing chip;
  const VlanBlock &table = chip.unit(unit).vlan;
  std::vector<VlanView> all;
  for (uint32_t vid = 0; vid < kVlanIds; ++vid) {
    const Vlan &vlan = table.vlan(vid);
    if (vlan.exists != 0) all.push_back({vid, vlan.member, vlan.untagged, vlan.stg});
  }
  return all;
}

std::vector<uint32_t> pvids(uint32_t unit) {
  Viewing chip;
  std::vector<uint32_t> all;
  for (int32_t port = 0; port < VCHIP_PORTS; ++port) all.push_back(chip.unit(unit).vlan.pvid(port));
  return all;
}

std::vector<EgressView> egress_entries(uint32_t unit) {
  Viewing chip;
  const ConversionBlock &block = chip.unit(unit).conversion;
  std::vector<EgressView> all;
  for (uint32_t index = 0; index < kEgressEntries; ++index) {
    const chip_vlan_egress_entry &entry = block.egress(index);
    if (entry.valid == 0) continue;
    all.push_back(
        {index,
         entry.ignore_vid != 0,
         entry.vid,
         entry.ignore_second_key != 0,
         entry.second_key,
         entry.ignore_port != 0,
         entry.port,
         entry.new_vid,
         {entry.field6, entry.field7, entry.field10, entry.field11, entry.field13, entry.field14}});
  }
  return all;
}

std::vector<uint32_t> ingress_block_modes(uint32_t unit) {
  Viewing chip;
  const auto &modes = chip.unit(unit).conversion.modes();
  return {modes.begin(), modes.end()};
}

}  // namespace vchip
