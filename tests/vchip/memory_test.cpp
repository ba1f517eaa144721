// SPDX-License-Identifier: MIT
// The chip as a block of memory: a copy of its bytes is a copy of the chip.
#include <swctl-vchip/memory.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <cstring>
#include <vector>

#include "private_chip.h"

namespace {

using ChipMemory = vchip_test::PrivateChip;

std::vector<uint8_t> copy_of_chip() {
  const vchip::Memory chip = vchip::memory();
  const auto *bytes = static_cast<const uint8_t *>(chip.start);
  return {bytes, bytes + chip.size};
}

TEST_F(ChipMemory, HoldsWhatTheChipHolds) {
  ASSERT_EQ(rtk_vlan_create(0, 10), 0);
  const std::vector<uint8_t> before = copy_of_chip();
  const std::string picture = vchip::dump_json(-1);
  ASSERT_EQ(rtk_vlan_create(1, 20), 0);
  EXPECT_NE(copy_of_chip(), before);
  memcpy(vchip::memory().start, before.data(), before.size());
  EXPECT_EQ(vchip::dump_json(-1), picture);
  EXPECT_EQ(rtk_vlan_destroy(1, 20), VCHIP_E_VLAN);
}

TEST_F(ChipMemory, StaysWhereItIs) {
  const void *const start = vchip::memory().start;
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_EQ(vchip::memory().start, start);
}

// A caller's record has bytes between its fields that nobody has written.
TEST_F(ChipMemory, HoldsNothingBetweenTheFields) {
  chip_vlan_egress_entry entry;
  std::vector<uint8_t> held[2];
  for (const size_t run : {0, 1}) {
    memset(static_cast<void *>(&entry), run == 0 ? 0x00 : 0xff, sizeof entry);
    entry.valid = entry.ignore_vid = entry.ignore_second_key = entry.ignore_port = 1;
    entry.vid = entry.second_key = entry.port = entry.new_vid = 10;
    entry.field6 = entry.field7 = entry.field10 = entry.field11 = 0;
    entry.field13 = entry.field14 = 0;
    ASSERT_EQ(vchip_reset(), 0);
    ASSERT_EQ(rtk_vlan_egrVlanCnvtEntry_set(0, 3, &entry), 0);
    held[run] = copy_of_chip();
  }
  EXPECT_TRUE(held[0] == held[1]);
}

}  // namespace
