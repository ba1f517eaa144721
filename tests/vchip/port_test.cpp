// SPDX-License-Identifier: MIT
// Settings of a port: power-on values, what a setter keeps, and where.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <string>

#include "private_chip.h"

namespace {

using Port = vchip_test::PrivateChip;
using vchip_test::kUntouched;

std::string dump_without_unit(uint32_t unit, int32_t except) {
  std::string text;
  for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
    if (port == except) continue;
    const vchip::PortView view = vchip::port(unit, port);
    for (const uint32_t word :
         {uint32_t{view.admin}, uint32_t{view.autonegotiation}, view.advertised, view.forced_speed,
          view.forced_duplex, view.forced_flow_control, view.medium, uint32_t{view.loopback},
          uint32_t{view.cable}, view.partner_ability})
      text += std::to_string(word) + " ";
  }
  return text;
}

void expect_power_on(const vchip::PortView &view) {
  EXPECT_TRUE(view.admin);
  EXPECT_TRUE(view.autonegotiation);
  EXPECT_EQ(view.advertised, 0xf6000000u);
  EXPECT_EQ(view.forced_speed, 2u);
  EXPECT_EQ(view.forced_duplex, 1u);
  EXPECT_EQ(view.forced_flow_control, 0u);
  EXPECT_EQ(view.medium, 0u);
  EXPECT_FALSE(view.loopback);
  EXPECT_FALSE(view.cable);
  EXPECT_FALSE(view.partner_autonegotiation);
  EXPECT_EQ(view.partner_ability, 0u);
}

TEST_F(Port, PowerOn) {
  for (uint32_t unit = 0; unit < VCHIP_UNITS; ++unit) {
    for (int32_t port = 0; port < VCHIP_CPU_PORT; ++port) {
      const vchip::PortView view = vchip::port(unit, port);
      expect_power_on(view);
      EXPECT_FALSE(view.link);
      EXPECT_EQ(view.speed, 0u);
      EXPECT_EQ(view.duplex, 0u);
    }
  }
}

TEST_F(Port, PowerOnThroughTheSdk) {
  uint32_t one = kUntouched, two = kUntouched, three = kUntouched;
  EXPECT_EQ(rtk_port_link_get(1, 5, &one), 0);
  EXPECT_EQ(one, 0u);
  EXPECT_EQ(rtk_port_adminEnable_get(1, 5, &one), 0);
  EXPECT_EQ(one, 1u);
  one = kUntouched;
  EXPECT_EQ(rtk_port_phyAutoNegoEnable_get(1, 5, &one), 0);
  EXPECT_EQ(one, 1u);
  EXPECT_EQ(rtk_port_phyAutoNegoAbility_get(1, 5, &one), 0);
  EXPECT_EQ(one, 0xf6000000u);
  EXPECT_EQ(rtk_port_phyForceModeAbility_get(1, 5, &one, &two, &three), 0);
  EXPECT_EQ(one, 2u);
  EXPECT_EQ(two, 1u);
  EXPECT_EQ(three, 0u);
  EXPECT_EQ(rtk_port_phyComboPortMedia_get(1, 5, &one), 0);
  EXPECT_EQ(one, 0u);
  EXPECT_EQ(rtk_diag_portMacLocalLoopbackEnable_get(1, 5, &two), 0);
  EXPECT_EQ(two, 0u);
}

TEST_F(Port, FlagsReadBack) {
  for (const uint32_t value : {0u, 1u, 0u}) {
    uint32_t read = kUntouched;
    ASSERT_EQ(rtk_port_adminEnable_set(1, 7, value), 0);
    ASSERT_EQ(rtk_port_adminEnable_get(1, 7, &read), 0);
    EXPECT_EQ(read, value);
    EXPECT_EQ(vchip::port(1, 7).admin, value != 0);
    ASSERT_EQ(rtk_port_phyAutoNegoEnable_set(1, 7, value), 0);
    ASSERT_EQ(rtk_port_phyAutoNegoEnable_get(1, 7, &(read = kUntouched)), 0);
    EXPECT_EQ(read, value);
    EXPECT_EQ(vchip::port(1, 7).autonegotiation, value != 0);
    ASSERT_EQ(rtk_diag_portMacLocalLoopbackEnable_set(1, 7, value), 0);
    ASSERT_EQ(rtk_diag_portMacLocalLoopbackEnable_get(1, 7, &(read = kUntouched)), 0);
    EXPECT_EQ(read, value);
    EXPECT_EQ(vchip::port(1, 7).loopback, value != 0);
  }
}

TEST_F(Port, EveryForcedModeReadsBack) {
  for (uint32_t speed = 0; speed <= 4; ++speed) {
    for (uint32_t duplex = 0; duplex <= 1; ++duplex) {
      for (uint32_t pause = 0; pause <= 1; ++pause) {
        ASSERT_EQ(rtk_port_phyForceModeAbility_set(0, 9, speed, duplex, pause), 0);
        uint32_t words[3] = {kUntouched, kUntouched, kUntouched};
        ASSERT_EQ(rtk_port_phyForceModeAbility_get(0, 9, &words[0], &words[1], &words[2]), 0);
        EXPECT_EQ(words[0], speed);
        EXPECT_EQ(words[1], duplex);
        EXPECT_EQ(words[2], pause);
        EXPECT_EQ(vchip::port(0, 9).forced_speed, speed);
        EXPECT_EQ(vchip::port(0, 9).forced_duplex, duplex);
        EXPECT_EQ(vchip::port(0, 9).forced_flow_control, pause);
      }
    }
  }
}

TEST_F(Port, AChangeStaysOnItsPortAndUnit) {
  const std::string other_unit = dump_without_unit(1, -1);
  const std::string other_ports = dump_without_unit(0, 27);
  const uint32_t ability = VCHIP_ABILITY_10_HALF;
  ASSERT_EQ(rtk_port_adminEnable_set(0, 27, 0), 0);
  ASSERT_EQ(rtk_port_phyAutoNegoEnable_set(0, 27, 0), 0);
  ASSERT_EQ(rtk_port_phyAutoNegoAbility_set(0, 27, &ability), 0);
  ASSERT_EQ(rtk_port_phyForceModeAbility_set(0, 27, 0, 0, 1), 0);
  ASSERT_EQ(rtk_diag_portMacLocalLoopbackEnable_set(0, 27, 1), 0);
  ASSERT_EQ(vchip_cable_plug(0, 27, &vchip_test::kUsualPartner), 0);
  EXPECT_EQ(dump_without_unit(1, -1), other_unit);
  EXPECT_EQ(dump_without_unit(0, 27), other_ports);
  EXPECT_NE(dump_without_unit(0, -1), other_unit);
}

TEST_F(Port, ResetUndoesEverything) {
  const std::string power_on = vchip::dump_json(-1);
  const uint32_t ability = VCHIP_ABILITY_ALL;
  for (uint32_t unit = 0; unit < VCHIP_UNITS; ++unit) {
    ASSERT_EQ(rtk_port_adminEnable_set(unit, 24, 0), 0);
    ASSERT_EQ(rtk_port_phyAutoNegoEnable_set(unit, 24, 0), 0);
    ASSERT_EQ(rtk_port_phyAutoNegoAbility_set(unit, 24, &ability), 0);
    ASSERT_EQ(rtk_port_phyForceModeAbility_set(unit, 24, 4, 0, 1), 0);
    ASSERT_EQ(rtk_diag_portMacLocalLoopbackEnable_set(unit, 24, 1), 0);
    ASSERT_EQ(vchip_cable_plug(unit, 24, &vchip_test::kUsualPartner), 0);
    ASSERT_EQ(vchip_medium_set(unit, 24, 1), 0);
    ASSERT_EQ(rtk_port_adminEnable_set(unit, VCHIP_CPU_PORT, 0), 0);
  }
  EXPECT_NE(vchip::dump_json(-1), power_on);
  EXPECT_EQ(vchip_reset(), 0);
  EXPECT_EQ(vchip::dump_json(-1), power_on);
  expect_power_on(vchip::port(0, 24));
  expect_power_on(vchip::port(1, 24));
}

TEST_F(Port, TheCpuPortIsAlwaysUp) {
  for (const uint32_t admin : {1u, 0u}) {
    ASSERT_EQ(rtk_port_adminEnable_set(0, VCHIP_CPU_PORT, admin), 0);
    uint32_t link = kUntouched, speed = kUntouched, duplex = kUntouched;
    EXPECT_EQ(rtk_port_link_get(0, VCHIP_CPU_PORT, &link), 0);
    EXPECT_EQ(link, 1u);
    EXPECT_EQ(rtk_port_speedDuplex_get(0, VCHIP_CPU_PORT, &speed, &duplex), 0);
    EXPECT_EQ(speed, 2u);
    EXPECT_EQ(duplex, 1u);
    uint32_t read = kUntouched;
    EXPECT_EQ(rtk_port_adminEnable_get(0, VCHIP_CPU_PORT, &read), 0);
    EXPECT_EQ(read, admin);
  }
}

}  // namespace
