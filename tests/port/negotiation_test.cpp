// SPDX-License-Identifier: MIT
// Switching on and off, autonegotiation, abilities, crossover.
#include <swctl-vchip/ability.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using Negotiation = swctl_test::LibraryTest;
using swctl_test::chip_answers;

TEST_F(Negotiation, EnableReachesTheChipAndComesBack) {
  EXPECT_EQ(user_port_enable_set(0, 1, 5, 0), 0);
  EXPECT_FALSE(vchip::port(1, 5).admin);
  EXPECT_TRUE(vchip::port(0, 5).admin);
  uint32_t enable = 7;
  EXPECT_EQ(user_port_enable_get(0, 1, 5, &enable), 0);
  EXPECT_EQ(enable, 0u);
  EXPECT_EQ(user_port_enable_get(0, 0, 5, &enable), 0);
  EXPECT_EQ(enable, 1u);
  EXPECT_CALLS("rtk_port_adminEnable_set(unit=1, port=5, enable=0) = 0",
               "rtk_port_adminEnable_get(unit=1, port=5, enable=>0) = 0",
               "rtk_port_adminEnable_get(unit=0, port=5, enable=>1) = 0");
}

TEST_F(Negotiation, BackPressureReachesTheChip) {
  EXPECT_EQ(user_port_backpressure_set(0, 1, 5, 1), 0);
  EXPECT_TRUE(vchip::port(1, 5).back_pressure);
  EXPECT_FALSE(vchip::port(0, 5).back_pressure);
  EXPECT_CALLS("rtk_port_backpressureEnable_set(unit=1, port=5, enable=1) = 0");
}

TEST_F(Negotiation, AutonegotiationReachesTheChipAndComesBack) {
  EXPECT_EQ(user_port_autoneg_set(0, 1, 5, 0), 0);
  EXPECT_FALSE(vchip::port(1, 5).autonegotiation);
  uint32_t enable = 7;
  EXPECT_EQ(user_port_autoneg_get(0, 1, 5, &enable), 0);
  EXPECT_EQ(enable, 0u);
  EXPECT_CALLS("rtk_port_phyAutoNegoEnable_set(unit=1, port=5, enable=0) = 0",
               "rtk_port_phyAutoNegoEnable_get(unit=1, port=5, enable=>0) = 0");
}

TEST_F(Negotiation, AbilitiesGoToTheCallersUnit) {
  uint32_t ability = USER_ABILITY_100_FULL | USER_ABILITY_ASYMMETRIC_PAUSE;
  EXPECT_EQ(user_port_ability_advert_set(0, 1, 5, &ability), 0);
  EXPECT_EQ(vchip::port(1, 5).advertised, 0x11000000u);
  ability = 7;
  EXPECT_EQ(user_port_ability_advert_get(0, 1, 5, &ability), 0);
  EXPECT_EQ(ability, 0x11000000u);
  EXPECT_EQ(user_port_ability_advert_get(0, 0, 5, &ability), 0);
  EXPECT_EQ(ability, VCHIP_ABILITY_USUAL);
  EXPECT_CALLS("rtk_port_phyAutoNegoAbility_set(unit=1, port=5, ability=0x11000000) = 0",
               "rtk_port_phyAutoNegoAbility_get(unit=1, port=5, ability=>0x11000000) = 0",
               "rtk_port_phyAutoNegoAbility_get(unit=0, port=5, ability=>0xf6000000) = 0");
}

TEST_F(Negotiation, EveryAbilityWordOfTheTenTopBitsIsHandedOn) {
  for (uint32_t top = 0; top < 1024; ++top) {
    const uint32_t word = top << 22 | 1;
    swprobe::clear_plan();
    chip_answers("rtk_port_phyAutoNegoAbility_set", 0);
    swprobe::forget();
    EXPECT_EQ(user_port_ability_advert_set(0, 1, 5, &word), 0);
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(static_cast<uint32_t>(calls[0].in("ability")), word);
  }
}

TEST_F(Negotiation, TheThreeCrossoverModesReachTheChip) {
  for (uint32_t mode : {2u, 1u, 0u}) {
    EXPECT_EQ(user_port_mdix_set(0, 1, 5, mode), 0);
    EXPECT_EQ(vchip::port(1, 5).crossover, mode);
    EXPECT_EQ(vchip::port(0, 5).crossover, 0u);
    uint32_t read = 7;
    EXPECT_EQ(user_port_mdix_get(0, 1, 5, &read), 0);
    EXPECT_EQ(read, mode);
    const std::string digit = std::to_string(mode);
    EXPECT_CALLS("rtk_port_phyCrossOverMode_set(unit=1, port=5, mode=" + digit + ") = 0",
                 "rtk_port_phyCrossOverMode_get(unit=1, port=5, mode=>" + digit + ") = 0");
  }
}

TEST_F(Negotiation, AnyOtherCrossoverModeIsRefusedWithoutACall) {
  ASSERT_EQ(user_port_mdix_set(0, 1, 5, 2), 0);
  swprobe::forget();
  for (uint32_t mode : {3u, 4u, 255u, 256u, 0x80000000u, 0xFFFFFFFFu}) {
    EXPECT_EQ(user_port_mdix_set(0, 1, 5, mode), -1) << mode;
  }
  EXPECT_NO_CALLS();
  EXPECT_EQ(vchip::port(1, 5).crossover, 2u);
}

TEST_F(Negotiation, CrossoverSetReturnsTheSdksResult) {
  for (int64_t result : {-5, 3}) {
    swprobe::clear_plan();
    chip_answers("rtk_port_phyCrossOverMode_set", result);
    EXPECT_EQ(user_port_mdix_set(0, 1, 5, 1), result);
  }
}

}  // namespace
