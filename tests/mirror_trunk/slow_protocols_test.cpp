// SPDX-License-Identifier: MIT
// LACP and OAM frames.
#include <swctl-vchip/view.h>
#include <swctl/mirror_trunk.h>

#include <string>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using SlowProtocols = swctl_test::LibraryTest;

constexpr const char *kBypass = "rtk_trap_bypassStp_set";
constexpr const char *kAction = "rtk_trap_rmaGroupAction_set";
constexpr uint32_t kOn[] = {1, 7, 0x80000000, UINT32_MAX};

TEST_F(SlowProtocols, LacpIsTrappedAndPassesBlockedPorts) {
  for (const uint32_t enable : kOn) {
    ASSERT_EQ(vchip_reset(), 0);
    swprobe::forget();
    EXPECT_EQ(user_trunk_trap_lacp(9, 1, enable), 0);
    EXPECT_CALLS("rtk_trap_bypassStp_set(unit=1, type=6, enable=1) = 0",
                 "rtk_trap_rmaGroupAction_set(unit=1, group=1, action=2) = 0");
    EXPECT_EQ(vchip::traps(1).passes_blocked_ports[6], 1u);
    EXPECT_EQ(vchip::traps(1).rma_group_action, (std::vector<uint32_t>{0, 2, 0, 0}));
    EXPECT_EQ(vchip::traps(0).rma_group_action, std::vector<uint32_t>(4, 0));
  }
}

TEST_F(SlowProtocols, LacpIsDroppedOtherwise) {
  ASSERT_EQ(user_trunk_trap_lacp(0, 1, 1), 0);
  swprobe::forget();
  EXPECT_EQ(user_trunk_trap_lacp(9, 1, 0), 0);
  EXPECT_CALLS("rtk_trap_bypassStp_set(unit=1, type=6, enable=0) = 0",
               "rtk_trap_rmaGroupAction_set(unit=1, group=1, action=1) = 0");
  EXPECT_EQ(vchip::traps(1).passes_blocked_ports[6], 0u);
  EXPECT_EQ(vchip::traps(1).rma_group_action[1], 1u);
}

TEST_F(SlowProtocols, LacpStopsAfterANegativeBypass) {
  for (const int64_t result : {-1, -1005, INT32_MIN}) {
    chip_answers(kBypass, result);
    swprobe::forget();
    EXPECT_EQ(user_trunk_trap_lacp(0, 0, 1), result);
    EXPECT_EQ(swprobe::take().size(), 1u);
  }
}

TEST_F(SlowProtocols, LacpAnswersTheAction) {
  chip_answers(kBypass, 3);
  for (const int64_t result : {0, 5, -1}) {
    chip_answers(kAction, result);
    swprobe::forget();
    EXPECT_EQ(user_trunk_trap_lacp(0, 0, 0), result);
    EXPECT_EQ(swprobe::take().size(), 2u);
  }
}

TEST_F(SlowProtocols, OamIsTrappedOrDropped) {
  for (const uint32_t enable : {1u, 7u, 0x80000000u, UINT32_MAX, 0u}) {
    const uint32_t action = enable != 0 ? 2 : 1;
    swprobe::forget();
    EXPECT_EQ(user_eoam_trap_set(9, 1, enable), 0);
    EXPECT_CALLS("rtk_trap_rmaGroupAction_set(unit=1, group=0, action=" + std::to_string(action) +
                 ") = 0");
    EXPECT_EQ(vchip::traps(1).rma_group_action[0], action);
    EXPECT_EQ(vchip::traps(0).rma_group_action[0], 0u);
  }
  for (const int64_t result : {5, -1, INT32_MIN}) {
    chip_answers(kAction, result);
    EXPECT_EQ(user_eoam_trap_set(0, 0, 1), result);
  }
}

TEST_F(SlowProtocols, PrintsNothing) {
  const auto all = [] {
    user_trunk_trap_lacp(0, 2, 1);
    user_eoam_trap_set(0, 2, 1);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
