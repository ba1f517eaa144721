// SPDX-License-Identifier: MIT
// What holds for a whole unit: frame length and storm control.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <vector>

#include "private_chip.h"

namespace {

using UnitWide = vchip_test::PrivateChip;
using Bursts = std::vector<uint32_t>;

TEST_F(UnitWide, PowerOn) {
  for (uint32_t unit = 0; unit < VCHIP_UNITS; ++unit) {
    EXPECT_TRUE(vchip::switch_wide(unit).tag_counts_in_length);
    EXPECT_EQ(vchip::rates(unit).storm_mode, 1u);
    EXPECT_EQ(vchip::rates(unit).storm_burst, Bursts(5, 0));
  }
}

TEST_F(UnitWide, TagLength) {
  ASSERT_EQ(rtk_switch_maxPktLenTagLenCntIncEnable_set(1, 0), 0);
  EXPECT_FALSE(vchip::switch_wide(1).tag_counts_in_length);
  EXPECT_TRUE(vchip::switch_wide(0).tag_counts_in_length);
  ASSERT_EQ(rtk_switch_maxPktLenTagLenCntIncEnable_set(1, 1), 0);
  EXPECT_TRUE(vchip::switch_wide(1).tag_counts_in_length);
}

TEST_F(UnitWide, StormMode) {
  ASSERT_EQ(rtk_rate_stormControlRateMode_set(0, 0), 0);
  EXPECT_EQ(vchip::rates(0).storm_mode, 0u);
  EXPECT_EQ(vchip::rates(1).storm_mode, 1u);
  ASSERT_EQ(rtk_rate_stormControlRateMode_set(0, 1), 0);
  EXPECT_EQ(vchip::rates(0).storm_mode, 1u);
}

TEST_F(UnitWide, EveryStormTypeHasItsOwnBurst) {
  for (uint32_t type = 0; type < 5; ++type)
    ASSERT_EQ(rtk_rate_stormControlBurstSize_set(1, type, 100 + type), 0);
  EXPECT_EQ(vchip::rates(1).storm_burst, Bursts({100, 101, 102, 103, 104}));
  EXPECT_EQ(vchip::rates(0).storm_burst, Bursts(5, 0));
}

TEST_F(UnitWide, ResetUndoesIt) {
  ASSERT_EQ(rtk_switch_maxPktLenTagLenCntIncEnable_set(0, 0), 0);
  ASSERT_EQ(rtk_rate_stormControlRateMode_set(0, 0), 0);
  ASSERT_EQ(rtk_rate_stormControlBurstSize_set(0, 2, 100), 0);
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_TRUE(vchip::switch_wide(0).tag_counts_in_length);
  EXPECT_EQ(vchip::rates(0).storm_mode, 1u);
  EXPECT_EQ(vchip::rates(0).storm_burst, Bursts(5, 0));
}

}  // namespace
