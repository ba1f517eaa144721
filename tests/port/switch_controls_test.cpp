// SPDX-License-Identifier: MIT
// Attack prevention, energy-efficient Ethernet, frames to the CPU.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "fail_each.h"

namespace {

using SwitchControls = swctl_test::LibraryTest;
using swctl_test::chip_answers;

constexpr const char *kEnable = "rtk_sec_portAttackPreventEnable_set";
constexpr const char *kActionGet = "rtk_sec_attackPreventAction_get";

// The chip ports of the interfaces 1 to 26, ascending.
std::vector<int32_t> front_ports() {
  std::vector<int32_t> ports;
  for (int32_t port = 0; port < 25; ++port) ports.push_back(port);
  ports.push_back(26);
  return ports;
}

TEST_F(SwitchControls, AttackInitWalksEveryFrontInterface) {
  EXPECT_EQ(user_dos_attack_prevent_init(0, 1), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 52u);
  for (int32_t interface = 1; interface <= 26; ++interface) {
    const auto &convert = calls[static_cast<size_t>(2 * (interface - 1))];
    const auto &enable = calls[static_cast<size_t>(2 * (interface - 1) + 1)];
    EXPECT_EQ(convert.name, "adp_intf_2_phy_id");
    EXPECT_EQ(convert.in("interface"), interface);
    EXPECT_EQ(enable.name, kEnable);
    EXPECT_EQ(enable.in("unit"), 1);
    EXPECT_EQ(enable.in("port"), front_ports()[static_cast<size_t>(interface - 1)]);
    EXPECT_EQ(enable.in("enable"), 1);
  }
  EXPECT_EQ(vchip::attacks(1).protected_ports, 0x05FFFFFFu);
  EXPECT_EQ(vchip::attacks(0).protected_ports, 0u);
}

TEST_F(SwitchControls, AttackInitStopsAtTheFirstFailure) {
  swctl_test::fail_each([] { vchip_reset(); }, [] { return user_dos_attack_prevent_init(0, 1); },
                        [](const swctl_test::FailedRun &run) {
                          swctl_test::expect_end(run);
                          const uint32_t before = (uint32_t{1} << run.place) - 1;
                          EXPECT_EQ(vchip::attacks(1).protected_ports, before);
                        });
}

TEST_F(SwitchControls, AttackInitAnswersZeroAfterPositiveResults) {
  chip_answers(kEnable, 5);
  EXPECT_EQ(user_dos_attack_prevent_init(0, 1), 0);
  EXPECT_EQ(swprobe::take().size(), 52u);
}

TEST_F(SwitchControls, AttackInitTakesWhateverTheAdapterAnswers) {
  chip_answers("adp_intf_2_phy_id", -44);
  chip_answers(kEnable, 0);
  swprobe::forget();
  EXPECT_EQ(user_dos_attack_prevent_init(0, 1), 0);
  for (const auto &call : swctl_test::take_sdk_calls()) EXPECT_EQ(call.in("port"), -44);
}

TEST_F(SwitchControls, AttackActionIsZeroOrOneOnTheCallersUnit) {
  EXPECT_EQ(user_dos_attack_prevent_action_set(0, 1, 3, 9), 0);
  EXPECT_EQ(vchip::attacks(1).action.at(3), 1u);
  EXPECT_EQ(vchip::attacks(0).action.at(3), 0u);
  EXPECT_EQ(user_dos_attack_prevent_action_set(0, 1, 3, 0), 0);
  EXPECT_EQ(vchip::attacks(1).action.at(3), 0u);
  EXPECT_CALLS("rtk_sec_attackPreventAction_set(unit=1, type=3, action=1) = 0",
               "rtk_sec_attackPreventAction_set(unit=1, type=3, action=0) = 0");
  for (int64_t result : {-5, 5}) {
    swprobe::clear_plan();
    chip_answers("rtk_sec_attackPreventAction_set", result);
    EXPECT_EQ(user_dos_attack_prevent_action_set(0, 1, 0xFFFFFFFF, 0x80000000), result);
    const auto call = swprobe::take().back();
    EXPECT_EQ(static_cast<uint32_t>(call.in("type")), 0xFFFFFFFFu);
    EXPECT_EQ(call.in("action"), 1);
  }
}

TEST_F(SwitchControls, AttackActionIsReadOnUnitZero) {
  ASSERT_EQ(rtk_sec_attackPreventAction_set(0, 3, 1), 0);
  swprobe::forget();
  for (uint32_t unit : {0u, 1u, 99u}) {
    uint32_t action = 7;
    EXPECT_EQ(user_dos_attack_prevent_action_get(0, unit, 3, &action), 0);
    EXPECT_EQ(action, 1u);
    EXPECT_CALLS("rtk_sec_attackPreventAction_get(unit=0, type=3, action=>1) = 0");
  }
}

TEST_F(SwitchControls, AttackActionReadIsZeroOrOneAndItsResultZero) {
  for (const auto &[sdk, generic] :
       std::vector<std::pair<uint32_t, uint32_t>>{{0, 0}, {1, 1}, {2, 1}, {0x80000000, 1}}) {
    chip_answers(kActionGet, 5, {{"action", sdk}});
    uint32_t action = 7;
    EXPECT_EQ(user_dos_attack_prevent_action_get(0, 1, 3, &action), 0) << "not 5";
    EXPECT_EQ(action, generic);
  }
  chip_answers(kActionGet, 0);
  uint32_t action = 7;
  EXPECT_EQ(user_dos_attack_prevent_action_get(0, 1, 3, &action), 0);
  EXPECT_EQ(action, 0u) << "cleared first";
}

TEST_F(SwitchControls, AFailedAttackActionReadWritesNothing) {
  chip_answers(kActionGet, -5, {{"action", 1}});
  uint32_t action = 7;
  EXPECT_EQ(user_dos_attack_prevent_action_get(0, 1, 3, &action), -5);
  EXPECT_EQ(action, 7u);
}

TEST_F(SwitchControls, EeeReachesTheChipAndComesBack) {
  EXPECT_EQ(user_eee_portEnable_set(0, 1, 5, 1), 0);
  EXPECT_TRUE(vchip::port(1, 5).eee);
  EXPECT_FALSE(vchip::port(0, 5).eee);
  uint32_t enable = 7;
  EXPECT_EQ(user_eee_portEnable_get(0, 1, 5, &enable), 0);
  EXPECT_EQ(enable, 1u);
  EXPECT_CALLS("rtk_eee_portEnable_set(unit=1, port=5, enable=1) = 0",
               "rtk_eee_portEnable_get(unit=1, port=5, enable=>1) = 0");
}

TEST_F(SwitchControls, CpuFormatIsHandedOn) {
  EXPECT_EQ(user_switch_pkt2CpuTypeFormat_set(0, 1, 4, 2), 0);
  EXPECT_EQ(vchip::switch_wide(1).cpu_format.at(4), 2u);
  EXPECT_EQ(vchip::switch_wide(0).cpu_format.at(4), 0u);
  EXPECT_CALLS("rtk_switch_pkt2CpuTypeFormat_set(unit=1, type=4, format=2) = 0");
  for (int64_t result : {-5, 5}) {
    chip_answers("rtk_switch_pkt2CpuTypeFormat_set", result);
    EXPECT_EQ(user_switch_pkt2CpuTypeFormat_set(99, 7, 0xFFFFFFFF, 0x80000001), result);
    const auto call = swprobe::take().back();
    EXPECT_EQ(call.in("unit"), 7);
    EXPECT_EQ(static_cast<uint32_t>(call.in("type")), 0xFFFFFFFFu);
    EXPECT_EQ(static_cast<uint32_t>(call.in("format")), 0x80000001u);
  }
}

TEST_F(SwitchControls, LeadingArgumentIsIgnored) {
  for (uint32_t lead : {1u, 0xFFFFFFFFu}) {
    uint32_t action = 7;
    EXPECT_EQ(user_dos_attack_prevent_init(lead, 1), 0);
    EXPECT_EQ(user_dos_attack_prevent_action_set(lead, 0, 3, 1), 0);
    EXPECT_EQ(user_dos_attack_prevent_action_get(lead, 0, 3, &action), 0);
    EXPECT_EQ(action, 1u);
  }
}

}  // namespace
