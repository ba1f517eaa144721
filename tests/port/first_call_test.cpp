// SPDX-License-Identifier: MIT
// The library's own words are 0 when it is loaded. Each test is about a word
// of its own, and none of the others touches it.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using FirstCall = swctl_test::LibraryTest;

TEST_F(FirstCall, RestoringLearningWritesZeroes) {
  ASSERT_EQ(rtk_l2_newMacOp_set(0, 5, 2, 3), 0);
  swprobe::forget();
  EXPECT_EQ(user_port_learn_set(0, 1, 5, 16), 0);
  EXPECT_CALLS("rtk_l2_newMacOp_set(unit=0, port=5, mode=0, action=0) = 0");
}

TEST_F(FirstCall, StormRatesReadAsTheyAre) {
  ASSERT_EQ(user_rate_bandwidth_set(0, 0, 5, 2, 100), 0);
  uint32_t rate = 7;
  uint32_t enable = 7;
  EXPECT_EQ(user_rate_bandwidth_get(0, 0, 5, 2, &rate, &enable), 0);
  EXPECT_EQ(rate, 100u) << "although the chip counts packets after power-on";
  EXPECT_EQ(vchip::rates(0).storm_mode, 1u);
}

TEST_F(FirstCall, TheFirstDoubleTagPortChangesTheSwitchOver) {
  EXPECT_EQ(user_port_dtag_mode_set(0, 0, 5, 1), 0);
  EXPECT_EQ(vchip::tpids(0).outer.at(0), 0x8100u);
}

}  // namespace
