// SPDX-License-Identifier: MIT
// The board's numbering, in both directions.
#include <swctl-vchip/view.h>
#include <swctl/platform/adapter.h>

#include <climits>
#include <map>

#include "private_chip.h"

namespace {

using Board = vchip_test::PrivateChip;

// Interface to port, as the box is wired.
const std::map<int32_t, int32_t> &wiring() {
  static const std::map<int32_t, int32_t> wires = {
      {0, 28},  {1, 0},   {2, 1},   {3, 2},   {4, 3},   {5, 4},   {6, 5},   {7, 6},   {8, 7},
      {9, 8},   {10, 9},  {11, 10}, {12, 11}, {13, 12}, {14, 13}, {15, 14}, {16, 15}, {17, 16},
      {18, 17}, {19, 18}, {20, 19}, {21, 20}, {22, 21}, {23, 22}, {24, 23}, {25, 24}, {26, 26}};
  return wires;
}

TEST_F(Board, EveryInterface) {
  for (int32_t interface = -2; interface <= 40; ++interface) {
    const auto wire = wiring().find(interface);
    const int32_t expected = wire == wiring().end() ? -1 : wire->second;
    EXPECT_EQ(adp_intf_2_phy_id(interface), expected) << interface;
  }
  EXPECT_EQ(adp_intf_2_phy_id(INT_MIN), VCHIP_NO_INTERFACE);
  EXPECT_EQ(adp_intf_2_phy_id(INT_MAX), VCHIP_NO_INTERFACE);
}

TEST_F(Board, EveryPort) {
  std::map<int32_t, int32_t> backwards;
  for (const auto &[interface, port] : wiring()) backwards[port] = interface;
  for (int32_t port = -2; port <= 40; ++port) {
    const auto wire = backwards.find(port);
    const int32_t expected = wire == backwards.end() ? -1 : wire->second;
    EXPECT_EQ(adp_phy_2_intf_id(port), expected) << port;
  }
  EXPECT_EQ(adp_phy_2_intf_id(INT_MIN), VCHIP_NO_INTERFACE);
  EXPECT_EQ(adp_phy_2_intf_id(INT_MAX), VCHIP_NO_INTERFACE);
}

TEST_F(Board, TheViewUsesTheSameNumbers) {
  for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
    EXPECT_EQ(vchip::port(1, port).interface, adp_phy_2_intf_id(port));
    EXPECT_EQ(vchip::port(1, port).port, port);
    EXPECT_EQ(vchip::port(1, port).combo, port == 24 || port == 26) << port;
  }
}

}  // namespace
