// SPDX-License-Identifier: MIT
// Which link comes up, for every pair of ends.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <bit>
#include <string>

#include "private_chip.h"

namespace {

using vchip_test::kUntouched;

constexpr uint32_t k10H = VCHIP_ABILITY_10_HALF, k10F = VCHIP_ABILITY_10_FULL,
                   k100H = VCHIP_ABILITY_100_HALF, k100F = VCHIP_ABILITY_100_FULL,
                   k1000H = VCHIP_ABILITY_1000_HALF, k1000F = VCHIP_ABILITY_1000_FULL,
                   kPause = VCHIP_ABILITY_PAUSE;

class LinkTest : public vchip_test::PrivateChip {
 protected:
  static constexpr int32_t kPort = 3;

  void negotiate(uint32_t advertised) {
    ASSERT_EQ(rtk_port_phyAutoNegoEnable_set(0, kPort, 1), 0);
    ASSERT_EQ(rtk_port_phyAutoNegoAbility_set(0, kPort, &advertised), 0);
  }
  void force(uint32_t speed, uint32_t duplex) {
    ASSERT_EQ(rtk_port_phyAutoNegoEnable_set(0, kPort, 0), 0);
    ASSERT_EQ(rtk_port_phyForceModeAbility_set(0, kPort, speed, duplex, 0), 0);
  }
  void plug(uint32_t negotiates, uint32_t ability) {
    const vchip_partner_t partner = {negotiates, ability};
    ASSERT_EQ(vchip_cable_plug(0, kPort, &partner), 0);
  }
};

// The link as the SDK tells it: "down", "10 half", "1000 full"...
std::string link_of(uint32_t unit, int32_t port) {
  static const char *const kSpeeds[] = {"10", "100", "1000"};
  uint32_t up = kUntouched, speed = kUntouched, duplex = kUntouched;
  if (rtk_port_link_get(unit, port, &up) != 0) return "link refused";
  const int32_t result = rtk_port_speedDuplex_get(unit, port, &speed, &duplex);
  const vchip::PortView view = vchip::port(unit, port);
  if (view.link != (up == 1)) return "view and SDK differ";
  if (up == 0) {
    const bool silent = result == VCHIP_E_LINK && speed == kUntouched && duplex == kUntouched;
    return silent && view.speed == 0 && view.duplex == 0 ? "down" : "down with a speed";
  }
  if (up != 1 || result != 0 || speed > 2 || duplex > 1) return "nonsense";
  if (view.speed != speed || view.duplex != duplex) return "view and SDK differ";
  return kSpeeds[speed] + std::string(duplex == 1 ? " full" : " half");
}

struct Row {
  bool local_negotiates;
  uint32_t local_ability;  // what it advertises
  uint32_t local_speed;
  uint32_t local_duplex;
  uint32_t partner_negotiates;
  uint32_t partner_ability;
  const char *expected;
};

// Written from the standard's tables.
const Row kRows[] = {
    // Both negotiate: the best common mode.
    {true, VCHIP_ABILITY_USUAL, 0, 0, 1, VCHIP_ABILITY_USUAL, "1000 full"},
    {true, VCHIP_ABILITY_USUAL, 0, 0, 1, k10H | k10F | k100H | k100F, "100 full"},
    {true, VCHIP_ABILITY_USUAL, 0, 0, 1, k10F | k100H, "100 half"},
    {true, VCHIP_ABILITY_USUAL, 0, 0, 1, k10H | k10F, "10 full"},
    {true, VCHIP_ABILITY_USUAL, 0, 0, 1, k10H, "10 half"},
    {true, k1000H | k100F, 0, 0, 1, k1000H | k100F, "1000 half"},
    {true, k1000F | k1000H, 0, 0, 1, k1000F | k1000H, "1000 full"},
    {true, k10F, 0, 0, 1, k10H, "down"},
    {true, k1000F | kPause, 0, 0, 1, k100F | kPause, "down"},
    {true, 0, 0, 0, 1, VCHIP_ABILITY_USUAL, "down"},
    {true, VCHIP_ABILITY_USUAL, 0, 0, 1, k1000H, "down"},
    // The partner is forced: parallel detection.
    {true, VCHIP_ABILITY_USUAL, 0, 0, 0, k100F, "100 half"},
    {true, VCHIP_ABILITY_USUAL, 0, 0, 0, k100H, "100 half"},
    {true, VCHIP_ABILITY_USUAL, 0, 0, 0, k10F, "10 half"},
    {true, k10F, 0, 0, 0, k10H, "10 half"},
    {true, k10F | k10H, 0, 0, 0, k100F, "down"},
    {true, VCHIP_ABILITY_USUAL, 0, 0, 0, k1000F, "down"},
    {true, k1000F | k1000H, 0, 0, 0, k1000H, "down"},
    // The port is forced, the partner negotiates.
    {false, VCHIP_ABILITY_USUAL, 0, 1, 1, VCHIP_ABILITY_USUAL, "10 full"},
    {false, 0, 1, 0, 1, k100F, "100 half"},
    {false, 0, 1, 1, 1, k100H, "100 full"},
    {false, 0, 2, 1, 1, VCHIP_ABILITY_USUAL, "1000 full"},
    {false, 0, 2, 1, 1, k10F | k100F, "down"},
    {false, 0, 0, 1, 1, k100F | k1000F, "down"},
    // Both are forced.
    {false, 0, 0, 0, 0, k10H, "10 half"},
    {false, 0, 1, 1, 0, k100H, "100 full"},
    {false, 0, 2, 1, 0, k1000F, "1000 full"},
    {false, 0, 1, 1, 0, k10F, "down"},
    {false, 0, 2, 0, 0, k100F, "down"},
    // Speeds that the board does not have.
    {false, 0, 3, 1, 1, VCHIP_ABILITY_USUAL | k1000H, "down"},
    {false, 0, 4, 1, 1, VCHIP_ABILITY_USUAL | k1000H, "down"},
    {false, 0, 3, 1, 0, k1000F, "down"},
    {false, 0, 4, 0, 0, k10H, "down"},
};

TEST_F(LinkTest, Table) {
  for (const Row &row : kRows) {
    if (row.local_negotiates) {
      negotiate(row.local_ability);
    } else {
      force(row.local_speed, row.local_duplex);
    }
    plug(row.partner_negotiates, row.partner_ability);
    EXPECT_EQ(link_of(0, kPort), row.expected) << "row " << &row - kRows;
  }
}

// In the ability word a better mode has a lower bit, from 26 to 31.
std::string best_by_bit(uint32_t modes) {
  static const char *const kBest[] = {"1000 full", "1000 half", "100 full",
                                      "100 half",  "10 full",   "10 half"};
  return modes == 0 ? "down" : kBest[std::countr_zero(modes) - 26];
}

TEST_F(LinkTest, EveryPairOfNegotiatingEnds) {
  for (uint32_t local = 0; local < 64; ++local) {
    negotiate(local << 26);
    for (uint32_t partner = 1; partner < 64; ++partner) {
      plug(1, partner << 26);
      ASSERT_EQ(link_of(0, kPort), best_by_bit((local & partner) << 26)) << local << partner;
    }
  }
}

// The two bits of a speed code's modes, or none.
uint32_t bits_of_speed(uint32_t speed) {
  return speed == 0 ? k10H | k10F : speed == 1 ? k100H | k100F : speed == 2 ? k1000H | k1000F : 0;
}

std::string forced_name(uint32_t speed, uint32_t duplex) {
  return best_by_bit(bits_of_speed(speed) &
                     (duplex == 1 ? k10F | k100F | k1000F : k10H | k100H | k1000H));
}

TEST_F(LinkTest, EveryForcedModeAgainstEveryNegotiatingPartner) {
  for (uint32_t speed = 0; speed <= 4; ++speed) {
    for (uint32_t duplex = 0; duplex <= 1; ++duplex) {
      force(speed, duplex);
      for (uint32_t partner = 1; partner < 64; ++partner) {
        plug(1, partner << 26);
        const bool reached = (bits_of_speed(speed) & partner << 26) != 0;
        ASSERT_EQ(link_of(0, kPort), reached ? forced_name(speed, duplex) : "down")
            << speed << duplex << partner;
      }
    }
  }
}

TEST_F(LinkTest, EveryForcedModeAgainstEveryForcedPartner) {
  for (uint32_t speed = 0; speed <= 4; ++speed) {
    for (uint32_t bit = 26; bit < 32; ++bit) {
      force(speed, 1);
      plug(0, 1u << bit);
      const bool same = (bits_of_speed(speed) & 1u << bit) != 0;
      ASSERT_EQ(link_of(0, kPort), same ? forced_name(speed, 1) : "down") << speed << bit;
    }
  }
}

TEST_F(LinkTest, ALinkNeedsACableAndAnEnabledPort) {
  EXPECT_EQ(link_of(0, kPort), "down");
  plug(1, VCHIP_ABILITY_USUAL);
  EXPECT_EQ(link_of(0, kPort), "1000 full");
  EXPECT_EQ(link_of(1, kPort), "down");
  EXPECT_EQ(link_of(0, kPort + 1), "down");
  ASSERT_EQ(rtk_port_adminEnable_set(0, kPort, 0), 0);
  EXPECT_EQ(link_of(0, kPort), "down");
  EXPECT_TRUE(vchip::port(0, kPort).cable);
  ASSERT_EQ(rtk_port_adminEnable_set(0, kPort, 1), 0);
  EXPECT_EQ(link_of(0, kPort), "1000 full");
  ASSERT_EQ(vchip_cable_pull(0, kPort), 0);
  EXPECT_EQ(link_of(0, kPort), "down");
}

TEST_F(LinkTest, TheViewShowsThePartner) {
  plug(7, k10H | kPause);
  EXPECT_TRUE(vchip::port(0, kPort).partner_autonegotiation);
  EXPECT_EQ(vchip::port(0, kPort).partner_ability, k10H | kPause);
  plug(0, k1000F);
  EXPECT_FALSE(vchip::port(0, kPort).partner_autonegotiation);
  EXPECT_EQ(vchip::port(0, kPort).partner_ability, k1000F);
}

TEST_F(LinkTest, LoopbackDoesNotTouchTheLink) {
  ASSERT_EQ(rtk_diag_portMacLocalLoopbackEnable_set(0, kPort, 1), 0);
  EXPECT_EQ(link_of(0, kPort), "down");
}

TEST_F(LinkTest, FibreReportsLight) {
  for (const int32_t combo : {24, 26}) {
    uint32_t medium = kUntouched;
    ASSERT_EQ(vchip_medium_set(0, combo, 1), 0);
    EXPECT_EQ(rtk_port_phyComboPortMedia_get(0, combo, &medium), 0);
    EXPECT_EQ(medium, 1u);
    EXPECT_EQ(rtk_port_phyComboPortMedia_get(1, combo, &medium), 0);
    EXPECT_EQ(medium, 0u);
    EXPECT_EQ(link_of(0, combo), "down");
    const vchip_partner_t slow = {0, k10H};
    ASSERT_EQ(vchip_cable_plug(0, combo, &slow), 0);
    EXPECT_EQ(link_of(0, combo), "1000 full");
    ASSERT_EQ(rtk_port_adminEnable_set(0, combo, 0), 0);
    EXPECT_EQ(link_of(0, combo), "1000 full");
    ASSERT_EQ(vchip_medium_set(0, combo, 0), 0);
    EXPECT_EQ(link_of(0, combo), "down");
    ASSERT_EQ(rtk_port_adminEnable_set(0, combo, 1), 0);
    EXPECT_EQ(link_of(0, combo), "10 half");
  }
}

}  // namespace
