// SPDX-License-Identifier: MIT
// Which protocol frames the processor gets.
#include <swctl-vchip/view.h>
#include <swctl/stp.h>

#include <string>

#include "support/front_ports.h"
#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using swctl_test::front_ports;
using Trap = swctl_test::LibraryTest;

constexpr const char *kPortAction = "rtk_trap_portMgmtFrameAction_set";
constexpr uint32_t kBpdu = 19;
constexpr uint32_t kLldp = 21;
constexpr uint32_t kPowerOn = 1;

struct SwitchWide {
  int32_t (*function)(uint32_t, uint32_t, uint32_t);
  uint32_t type;
};
const SwitchWide kSwitchWide[] = {
    {user_igmp_trap_to_cpu, 5},
    {user_mld_trap_to_cpu, 4},
    {user_selfmac_trap_to_cpu, 24},
};

TEST_F(Trap, SwitchWideFramesAreTrappedOrForwarded) {
  for (const SwitchWide &test : kSwitchWide) {
    for (const uint32_t enable : {1u, 7u, 0x80000000u, UINT32_MAX, 0u}) {
      const uint32_t action = enable != 0 ? 2 : 0;
      swprobe::forget();
      EXPECT_EQ(test.function(9, 1, enable), 0);
      EXPECT_CALLS("rtk_trap_mgmtFrameAction_set(unit=1, type=" + std::to_string(test.type) +
                   ", action=" + std::to_string(action) + ") = 0");
      EXPECT_EQ(vchip::traps(1).frame_action[test.type], action);
      EXPECT_EQ(vchip::traps(0).frame_action[test.type], kPowerOn);
    }
  }
}

TEST_F(Trap, SwitchWideResultsPassThrough) {
  for (const int64_t result : {5, -1, -1001, INT32_MIN}) {
    chip_answers("rtk_trap_mgmtFrameAction_set", result);
    for (const SwitchWide &test : kSwitchWide) EXPECT_EQ(test.function(0, 0, 1), result);
  }
}

// What a walk over the front ports of a unit asks.
std::vector<std::string> walk(uint32_t unit, uint32_t type, uint32_t action) {
  std::vector<std::string> lines;
  for (const int32_t port : front_ports())
    lines.push_back(std::string(kPortAction) + "(unit=" + std::to_string(unit) +
                    ", port=" + std::to_string(port) + ", type=" + std::to_string(type) +
                    ", action=" + std::to_string(action) + ") = 0");
  return lines;
}

struct Walk {
  const char *name;
  int32_t (*function)(uint32_t unit);
  uint32_t type;
  uint32_t action;
};
const Walk kWalks[] = {
    {"stg_init", [](uint32_t unit) { return user_stg_init(8, unit); }, kBpdu, 0},
    {"bpdu trap", [](uint32_t unit) { return user_stg_set_bpdu_forward(8, unit, 0); }, kBpdu, 2},
    {"bpdu forward", [](uint32_t unit) { return user_stg_set_bpdu_forward(8, unit, 1); }, kBpdu, 0},
    {"bpdu other", [](uint32_t unit) { return user_stg_set_bpdu_forward(8, unit, 0x80000000); },
     kBpdu, 0},
    {"lldp_init", [](uint32_t unit) { return user_lldp_init(8, unit); }, kLldp, 0},
    {"lldp trap", [](uint32_t unit) { return user_lldp_set_bpdu_forward(8, unit, 0, 0); }, kLldp,
     2},
    {"lldp forward", [](uint32_t unit) { return user_lldp_set_bpdu_forward(8, unit, 5, 0); }, kLldp,
     0},
};

TEST_F(Trap, WalksReachTheFrontPortsOfTheNamedUnit) {
  for (const Walk &test : kWalks) {
    SCOPED_TRACE(test.name);
    ASSERT_EQ(vchip_reset(), 0);
    swprobe::forget();
    EXPECT_EQ(test.function(1), 0);
    const swctl_test::Asked asked = swctl_test::take_asked();
    EXPECT_EQ(asked.sdk, walk(1, test.type, test.action));
    EXPECT_EQ(asked.interfaces, swctl_test::front_interfaces());
    for (const int32_t port : front_ports())
      EXPECT_EQ(vchip::port_traps(1, port)[test.type], test.action);
    for (const int32_t port : {25, 27, 28})
      EXPECT_EQ(vchip::port_traps(1, port)[test.type], kPowerOn);
    EXPECT_EQ(vchip::port_traps(0, 0)[test.type], kPowerOn);
  }
}

TEST_F(Trap, WalksGoOnAndAnswerTheLastPort) {
  for (const Walk &test : kWalks) {
    const bool always_zero = std::string(test.name) == "stg_init";
    SCOPED_TRACE(test.name);
    swprobe::clear_plan();
    chip_answers(kPortAction, -5);
    swprobe::answer(kPortAction, 26, {-6, {}});
    swprobe::forget();
    EXPECT_EQ(test.function(0), always_zero ? 0 : -6);
    EXPECT_EQ(swctl_test::take_asked().sdk.size(), 26u);
    swprobe::clear_plan();
    swprobe::answer(kPortAction, 25, {-6, {}});
    EXPECT_EQ(test.function(0), 0);
    swprobe::clear_plan();
    swprobe::answer(kPortAction, 26, {3, {}});
    EXPECT_EQ(test.function(0), always_zero ? 0 : 3);
  }
}

TEST_F(Trap, LldpOfOneInterface) {
  EXPECT_EQ(user_lldp_set_bpdu_forward(8, 1, 0, 26), 0);
  EXPECT_CALLS("adp_intf_2_phy_id(interface=26) = 26",
               "rtk_trap_portMgmtFrameAction_set(unit=1, port=26, type=21, action=2) = 0");
  EXPECT_EQ(vchip::port_traps(1, 26)[kLldp], 2u);
  EXPECT_EQ(user_lldp_set_bpdu_forward(8, 1, 9, 3), 0);
  EXPECT_CALLS("adp_intf_2_phy_id(interface=3) = 2",
               "rtk_trap_portMgmtFrameAction_set(unit=1, port=2, type=21, action=0) = 0");
  EXPECT_EQ(vchip::port_traps(1, 2)[kLldp], 0u);
  EXPECT_EQ(vchip::port_traps(0, 2)[kLldp], kPowerOn);
}

TEST_F(Trap, LldpOfOneInterfaceAnswersTheSdk) {
  EXPECT_EQ(user_lldp_set_bpdu_forward(0, 0, 0, 27), VCHIP_E_PORT);
  EXPECT_CALLS("adp_intf_2_phy_id(interface=27) = -1",
               "rtk_trap_portMgmtFrameAction_set(unit=0, port=-1, type=21, action=2) = -1002");
  for (const int64_t result : {4, -7}) {
    chip_answers(kPortAction, result);
    swprobe::forget();
    EXPECT_EQ(user_lldp_set_bpdu_forward(0, 0, 0, -3), result);
    EXPECT_EQ(swctl_test::take_asked().sdk.size(), 1u) << "only interface 0 means all";
  }
}

TEST_F(Trap, PrintsNothing) {
  chip_answers(kPortAction, -5);
  const auto all = [] {
    for (const SwitchWide &test : kSwitchWide) test.function(0, 2, 1);
    for (const Walk &test : kWalks) test.function(0);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
