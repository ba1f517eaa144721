// SPDX-License-Identifier: MIT
// How IP multicast is looked up, and what becomes of what is not found.
#include <swctl-vchip/view.h>
#include <swctl/mcast.h>

#include <string>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using McastIpMode = swctl_test::LibraryTest;

struct Mode {
  int32_t (*function)(uint32_t, uint32_t, uint32_t);
  const char *call;
  uint32_t vchip::McastModeView::*mode;
};
const Mode kModes[] = {
    {User_switch_ipmc_set, "rtk_l2_ipmcMode_set", &vchip::McastModeView::ip_mode},
    {User_switch_ip6mc_mode_set, "rtk_l2_ip6mcMode_set", &vchip::McastModeView::ip6_mode},
};

TEST_F(McastIpMode, AnyEnableButZeroIsModeOne) {
  for (const Mode &test : kModes) {
    for (const uint32_t enable : {1u, 7u, 0x80000000u, UINT32_MAX, 0u}) {
      const uint32_t mode = enable != 0 ? 1 : 0;
      swprobe::forget();
      EXPECT_EQ(test.function(9, 1, enable), 0);
      EXPECT_CALLS(std::string(test.call) + "(unit=1, mode=" + std::to_string(mode) + ") = 0");
      EXPECT_EQ(vchip::mcast_modes(1).*test.mode, mode);
      EXPECT_EQ(vchip::mcast_modes(0).*test.mode, 0u);
    }
  }
}

TEST_F(McastIpMode, ModesAnswerTheSdk) {
  for (const Mode &test : kModes) {
    for (const int64_t result : {4, -1, INT32_MIN}) {
      chip_answers(test.call, result);
      EXPECT_EQ(test.function(0, 0, 1), result);
    }
  }
}

struct Miss {
  int32_t (*function)(uint32_t, uint32_t, int32_t, uint32_t);
  uint32_t type;
};
const Miss kMisses[] = {
    {User_switch_ipmc_lookup_miss_action, 0},
    {User_switch_ip6mc_lookup_miss_action, 1},
};

TEST_F(McastIpMode, MissActionsHaveTheirLookupType) {
  for (const Miss &test : kMisses) {
    swprobe::forget();
    EXPECT_EQ(test.function(9, 1, 25, 2), 0);
    EXPECT_CALLS("rtk_l2_portLookupMissAction_set(unit=1, port=25, type=" +
                 std::to_string(test.type) + ", action=2) = 0");
    EXPECT_EQ(vchip::mcast_modes(1).miss_actions[25][test.type], 2u);
    EXPECT_EQ(vchip::mcast_modes(0).miss_actions[25][test.type], 0u);
    EXPECT_EQ(vchip::mcast_modes(1).miss_actions[24][test.type], 0u);
  }
}

TEST_F(McastIpMode, MissActionsPassAnythingOn) {
  for (const Miss &test : kMisses) {
    for (const int64_t result : {0, 4, -1, INT32_MIN}) {
      chip_answers("rtk_l2_portLookupMissAction_set", result);
      swprobe::forget();
      EXPECT_EQ(test.function(0, 0xFFFFFFFF, -2, 0x80000000), result);
      const auto calls = swprobe::take();
      ASSERT_EQ(calls.size(), 1u);
      EXPECT_EQ(calls[0].in("unit"), 0xFFFFFFFF);
      EXPECT_EQ(calls[0].in("port"), -2);
      EXPECT_EQ(calls[0].in("action"), 0x80000000);
    }
  }
}

TEST_F(McastIpMode, PrintsNothing) {
  const auto all = [] {
    for (const Mode &test : kModes) test.function(0, 2, 1);
    for (const Miss &test : kMisses) test.function(0, 2, 0, 0);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
