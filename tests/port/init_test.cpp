// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using PortInit = swctl_test::LibraryTest;

const char *const kCalls[] = {
    "rtk_switch_maxPktLenTagLenCntIncEnable_set",
    "rtk_rate_stormControlRateMode_set",
    "rtk_rate_stormControlBurstSize_set",
};

TEST_F(PortInit, MakesFiveCallsInOrder) {
  EXPECT_EQ(user_port_init(0, 1), 0);
  EXPECT_CALLS("rtk_switch_maxPktLenTagLenCntIncEnable_set(unit=1, enable=0) = 0",
               "rtk_rate_stormControlRateMode_set(unit=1, mode=0) = 0",
               "rtk_rate_stormControlBurstSize_set(unit=1, type=2, size=100) = 0",
               "rtk_rate_stormControlBurstSize_set(unit=1, type=3, size=100) = 0",
               "rtk_rate_stormControlBurstSize_set(unit=1, type=4, size=100) = 0");
}

TEST_F(PortInit, ProgramsOnlyTheNamedUnit) {
  for (uint32_t unit = 0; unit < VCHIP_UNITS; ++unit) {
    rtk_switch_maxPktLenTagLenCntIncEnable_set(unit, 1);
    rtk_rate_stormControlRateMode_set(unit, 1);
    for (uint32_t type = 0; type < 5; ++type) rtk_rate_stormControlBurstSize_set(unit, type, 7);
  }
  user_port_init(0, 1);
  EXPECT_FALSE(vchip::switch_wide(1).tag_counts_in_length);
  EXPECT_EQ(vchip::rates(1).storm_mode, 0u);
  EXPECT_EQ(vchip::rates(1).storm_burst, (std::vector<uint32_t>{7, 7, 100, 100, 100}));
  EXPECT_TRUE(vchip::switch_wide(0).tag_counts_in_length);
  EXPECT_EQ(vchip::rates(0).storm_mode, 1u);
  EXPECT_EQ(vchip::rates(0).storm_burst, (std::vector<uint32_t>{7, 7, 7, 7, 7}));
}

TEST_F(PortInit, IgnoresEveryResult) {
  for (int64_t result : {-1, -1001, 5}) {
    for (const char *name : kCalls) {
      swprobe::clear_plan();
      swctl_test::chip_answers(name, result);
      swprobe::forget();
      EXPECT_EQ(user_port_init(0, 0), 0) << name;
      EXPECT_EQ(swprobe::take().size(), 5u) << name;
    }
  }
}

TEST_F(PortInit, IgnoresARefusedUnit) {
  EXPECT_EQ(user_port_init(0, VCHIP_UNITS), 0);
}

TEST_F(PortInit, PrintsNothing) {
  EXPECT_PRINTED(swctl_test::printed_by([] { user_port_init(0, VCHIP_UNITS); }), "", "");
}

}  // namespace
