// SPDX-License-Identifier: MIT
#include "vlan/conversion_block.h"

#include <algorithm>
#include <atomic>

#include "common/sound.h"

namespace vchip {
namespace {

// Field by field: what a caller's memory holds between them must not become
// part of an image. The valid flag is left alone.
void copy_fields(chip_vlan_egress_entry &to, const chip_vlan_egress_entry &from) {
  to.ignore_vid = from.ignore_vid;
  to.vid = from.vid;
  to.ignore_second_key = from.ignore_second_key;
  to.second_key = from.second_key;
  to.field6 = from.field6;
  to.field7 = from.field7;
  to.ignore_port = from.ignore_port;
  to.port = from.port;
  to.field10 = from.field10;
  to.field11 = from.field11;
  to.new_vid = from.new_vid;
  to.field13 = from.field13;
  to.field14 = from.field14;
}

// Values of a key that is ignored lead nowhere.
bool is_whole_entry(const chip_vlan_egress_entry &entry) {
  if (entry.valid == 0) return true;
  return (entry.ignore_vid != 0 || entry.vid < kVlanIds) &&
         (entry.ignore_port != 0 || entry.port < VCHIP_PORTS) && entry.new_vid < kVlanIds;
}

}  // namespace

// Power-on modes differ from what management programs set, so that a missing
// initialisation shows.
void ConversionBlock::power_on() {
  for (uint32_t block = 0; block < kIngressBlocks; ++block) modes_[block] = block;
}

bool ConversionBlock::sound() const {
  return std::ranges::all_of(egress_, is_whole_entry) && are_at_most(modes_, kMaxBlockMode);
}

void ConversionBlock::set_egress(uint32_t index, const chip_vlan_egress_entry &entry) {
  chip_vlan_egress_entry &own = egress_[index];
  const std::atomic_ref<uint32_t> valid(own.valid);
  valid.exchange(0);
  copy_fields(own, entry);
  valid.exchange(entry.valid);
}

}  // namespace vchip
