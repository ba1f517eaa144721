// SPDX-License-Identifier: MIT
// VLAN conversion that the chip does on its own, without rules.
#include <swctl/platform/sdk.h>
#include <swctl/vlan_rules.h>

#include <cstddef>

#include "vlan/vid.h"

namespace {

static_assert(sizeof(chip_vlan_egress_entry) == 56);
static_assert(offsetof(chip_vlan_egress_entry, vid) == 8);
static_assert(offsetof(chip_vlan_egress_entry, ignore_port) == 28);
static_assert(offsetof(chip_vlan_egress_entry, new_vid) == 44);

struct BlockMode {
  uint32_t block;
  uint32_t mode;
};
constexpr BlockMode kBlockModes[] = {{0, 1}, {1, 2}, {2, 0}};

}  // namespace

int32_t user_vlan_translate_egress_add(uint32_t, uint32_t unit, uint32_t index, int32_t port,
                                       uint32_t old_vid, uint32_t new_vid) {
  const chip_vlan_egress_entry entry = {
      .valid = 1,
      .ignore_vid = 0,
      .vid = swctl::vid_of(old_vid),
      .ignore_second_key = 1,
      .second_key = 0,
      .field6 = 0,
      .field7 = 0,
      .ignore_port = 0,
      .port = static_cast<uint32_t>(port),
      .field10 = 0,
      .field11 = 0,
      .new_vid = swctl::vid_of(new_vid),
      .field13 = 0,
      .field14 = 0,
  };
  return rtk_vlan_egrVlanCnvtEntry_set(unit, index, &entry);
}

int32_t user_vlan_translate_egress_delete(uint32_t, uint32_t unit, uint32_t index) {
  chip_vlan_egress_entry entry = {};
  entry.ignore_vid = 1;
  entry.ignore_second_key = 1;
  entry.ignore_port = 1;
  return rtk_vlan_egrVlanCnvtEntry_set(unit, index, &entry);
}

int32_t user_vlan_ingress_convert_block_mode_init(uint32_t unit) {
  int32_t result = 0;
  for (const BlockMode &each : kBlockModes) {
    result = rtk_vlan_igrVlanCnvtBlkMode_set(unit, each.block, each.mode);
    if (result < 0) break;
  }
  return result;
}
