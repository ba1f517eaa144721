// SPDX-License-Identifier: MIT
#include <swctl/l2.h>

#include <vector>

#include "support/library_test.h"

namespace {

using VoiceWalk = swctl_test::LibraryTest;

int32_t note_station(uint32_t unit, chip_l2_ucast_entry *entry, void *data) {
  EXPECT_EQ(unit, 0u);
  static_cast<std::vector<uint8_t> *>(data)->push_back(entry->mac[5]);
  return 0;
}

TEST_F(VoiceWalk, MeetsTheStationsOfUnitZero) {
  const vchip_station_t phone = {1, {2, 0, 0, 0, 0, 7}, 0};
  const vchip_station_t other = {1, {2, 0, 0, 0, 0, 8}, 0};
  ASSERT_EQ(vchip_station_learn(0, 3, &phone), 0);
  ASSERT_EQ(vchip_station_learn(1, 3, &other), 0);
  std::vector<uint8_t> seen;
  EXPECT_EQ(user_l2_voice_vlan_traverse(note_station, &seen), 0);
  EXPECT_THAT(seen, testing::ElementsAre(7));
}

}  // namespace
