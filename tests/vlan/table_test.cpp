// SPDX-License-Identifier: MIT
// Single VLANs and the default VLANs of the ports.
#include <swctl/vlan.h>

#include "support/library_test.h"
#include "vlan/bitmap.h"

namespace {

using swctl_test::chip_answers;
using swctl_test::Lines;
using swctl_test::vlan_of;

using VlanTable = swctl_test::LibraryTest;

TEST_F(VlanTable, CreateReachesTheChip) {
  EXPECT_EQ(user_vlan_create(9, 1, 100), 0);
  EXPECT_CALLS("rtk_vlan_create(unit=1, vid=100) = 0");
  EXPECT_EQ(vlan_of(1, 100), (vchip::VlanView{100, 0, 0, 0}));
  EXPECT_EQ(vchip::vlans(0).size(), 1u);
  EXPECT_EQ(user_vlan_create(0, 1, 100), 0x10004);
  EXPECT_EQ(USER_VLAN_EXISTS, 0x10004);
}

TEST_F(VlanTable, DestroyReachesTheChip) {
  EXPECT_EQ(user_vlan_destroy(9, 1, 1), 0);
  EXPECT_CALLS("rtk_vlan_destroy(unit=1, vid=1) = 0");
  EXPECT_EQ(vchip::vlans(1).size(), 0u);
  EXPECT_EQ(vchip::vlans(0).size(), 1u);
  EXPECT_EQ(user_vlan_destroy(0, 1, 1), VCHIP_E_VLAN);
}

TEST_F(VlanTable, DestroyAllRestoresTheDefault) {
  user_vlan_destroy(0, 1, 1);
  user_vlan_create(0, 1, 7);
  swprobe::forget();
  EXPECT_EQ(user_vlan_destroy_all(9, 1), 0);
  EXPECT_CALLS("rtk_vlan_destroyAll(unit=1, restore_default=1) = 0");
  EXPECT_EQ(vchip::vlans(1), (std::vector<vchip::VlanView>{{1, 0x1FFFFFFF, 0x1FFFFFFF, 0}}));
}

TEST_F(VlanTable, OnlyTheLowHalfOfAVlanIdCounts) {
  user_pbmp_t ports = swctl_test::bitmap({0});
  EXPECT_EQ(user_vlan_create(0, 0, 0xABCD0064), 0);
  user_vlan_port_add(0, 0, 0x10064, &ports, 1);
  user_vlan_port_remove(0, 0, 0x10064, &ports);
  user_vlan_port_set(0, 0, 0x10064, &ports, &ports);
  user_vlan_port_get(0, 0, 0x10064, &ports, &ports);
  EXPECT_EQ(user_vlan_destroy(0, 0, 0xFFFF0064), 0);
  for (const swprobe::Call &call : swprobe::take()) {
    if (!call.name.starts_with("rtk")) continue;
    EXPECT_EQ(call.in("vid"), 100) << call.line();
  }
}

TEST_F(VlanTable, ResultsArePassedOn) {
  for (const int32_t result : {0, 1, 0x10004, -1, INT32_MIN}) {
    swprobe::clear_plan();
    for (const char *call : {"rtk_vlan_create", "rtk_vlan_destroy", "rtk_vlan_destroyAll"})
      chip_answers(call, result);
    EXPECT_EQ(user_vlan_create(0, 0, 5), result);
    EXPECT_EQ(user_vlan_destroy(0, 0, 5), result);
    EXPECT_EQ(user_vlan_destroy_all(0, 0), result);
  }
}

TEST_F(VlanTable, DefaultSetWalksInterfacesZeroToThirtyOne) {
  chip_answers("adp_intf_2_phy_id", 3);
  chip_answers("rtk_vlan_portPvid_set", 0);
  EXPECT_EQ(user_vlan_default_set(9, 1, 0x30064), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 64u);
  for (size_t interface = 0; interface < 32; ++interface) {
    EXPECT_EQ(calls[2 * interface].line(),
              "adp_intf_2_phy_id(interface=" + std::to_string(interface) + ") = 3 !");
    EXPECT_EQ(calls[2 * interface + 1].line(),
              "rtk_vlan_portPvid_set(unit=1, port=3, pvid=100) = 0 !");
  }
}

TEST_F(VlanTable, DefaultSetEndsBehindTheBoardsLastInterface) {
  EXPECT_EQ(user_vlan_default_set(0, 1, 100), VCHIP_E_PORT);
  const std::vector<uint32_t> pvids = vchip::pvids(1);
  for (uint32_t port = 0; port < VCHIP_PORTS; ++port)
    EXPECT_EQ(pvids[port], port == 25 || port == 27 ? 1u : 100u) << port;
  EXPECT_EQ(vchip::pvids(0)[0], 1u);
  EXPECT_EQ(swprobe::take().size(), 2u * 28);
}

TEST_F(VlanTable, DefaultSetStopsAtTheFirstResultThatIsNotZero) {
  for (const int32_t result : {-5, 5}) {
    swprobe::clear_plan();
    swprobe::answer("rtk_vlan_portPvid_set", 3, {result, {}});
    swprobe::forget();
    EXPECT_EQ(user_vlan_default_set(0, 0, 7), result);
    EXPECT_EQ(swprobe::take().size(), 6u);
  }
  EXPECT_EQ(vchip::pvids(0)[0], 7u);
  EXPECT_EQ(vchip::pvids(0)[1], 1u);
}

TEST_F(VlanTable, DefaultGetAsksForChipPortOne) {
  // Interface 2 is on chip port 1; interface 1 is not.
  EXPECT_EQ(user_vlan_default_set(0, 1, 4094), VCHIP_E_PORT);
  swprobe::forget();
  uint16_t vid = 7;
  EXPECT_EQ(user_vlan_default_get(9, 1, &vid), 0);
  EXPECT_EQ(vid, 4094);
  EXPECT_CALLS("rtk_vlan_portPvid_get(unit=1, port=1, pvid=>4094) = 0");
  EXPECT_EQ(user_vlan_default_get(0, 0, &vid), 0);
  EXPECT_EQ(vid, 1);
}

TEST_F(VlanTable, DefaultGetWritesWhateverTheResult) {
  uint16_t vid[3] = {7, 7, 7};
  EXPECT_EQ(user_vlan_default_get(0, VCHIP_UNITS, &vid[1]), VCHIP_E_UNIT);
  EXPECT_EQ(vid[1], 0);
  chip_answers("rtk_vlan_portPvid_get", -9, {{"pvid", 0x12345678}});
  EXPECT_EQ(user_vlan_default_get(0, 0, &vid[1]), -9);
  EXPECT_EQ(vid[1], 0x5678);
  // Two bytes and no more.
  EXPECT_EQ(vid[0], 7);
  EXPECT_EQ(vid[2], 7);
}

}  // namespace
