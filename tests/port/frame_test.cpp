// SPDX-License-Identifier: MIT
// Default VLAN and frame length.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "fail_each.h"

namespace {

using DefaultVlan = swctl_test::LibraryTest;
using FrameLength = swctl_test::LibraryTest;
using swctl_test::chip_answers;

TEST_F(DefaultVlan, SetWritesInnerAndOuter) {
  EXPECT_EQ(user_port_untagged_vlan_set(0, 1, 5, 65636), 0);
  EXPECT_CALLS("rtk_vlan_portPvid_set(unit=1, port=5, pvid=100) = 0",
               "rtk_vlan_portOuterPvid_set(unit=1, port=5, pvid=100) = 0");
  EXPECT_EQ(vchip::pvids(1).at(5), 100u);
  EXPECT_EQ(vchip::tags(1, 5).outer_pvid, 100u);
  EXPECT_EQ(vchip::pvids(0).at(5), 1u);
  EXPECT_EQ(vchip::tags(0, 5).outer_pvid, 1u);
}

TEST_F(DefaultVlan, SetEndsAtTheFirstFailure) {
  swctl_test::fail_each([] {}, [] { return user_port_untagged_vlan_set(0, 1, 5, 100); },
                        swctl_test::expect_end);
}

TEST_F(DefaultVlan, SetReturnsTheSecondResult) {
  chip_answers("rtk_vlan_portPvid_set", 3);
  EXPECT_EQ(user_port_untagged_vlan_set(0, 1, 5, 100), 0);
  chip_answers("rtk_vlan_portOuterPvid_set", 4);
  EXPECT_EQ(user_port_untagged_vlan_set(0, 1, 5, 100), 4);
}

TEST_F(DefaultVlan, GetWritesSixteenBits) {
  ASSERT_EQ(rtk_vlan_portPvid_set(1, 5, 300), 0);
  swprobe::forget();
  uint16_t vid[3] = {7, 7, 7};
  EXPECT_EQ(user_port_untagged_vlan_get(0, 1, 5, &vid[1]), 0);
  EXPECT_EQ(vid[0], 7);
  EXPECT_EQ(vid[1], 300);
  EXPECT_EQ(vid[2], 7);
  EXPECT_CALLS("rtk_vlan_portPvid_get(unit=1, port=5, pvid=>300) = 0");
}

TEST_F(DefaultVlan, GetStoresWhateverTheResult) {
  for (int64_t result : {-5, 5}) {
    swprobe::clear_plan();
    chip_answers("rtk_vlan_portPvid_get", result, {{"pvid", 0x12345678}});
    uint16_t vid = 7;
    EXPECT_EQ(user_port_untagged_vlan_get(0, 1, 5, &vid), result);
    EXPECT_EQ(vid, 0x5678);
  }
  swprobe::clear_plan();
  uint16_t vid = 7;
  EXPECT_EQ(user_port_untagged_vlan_get(0, VCHIP_UNITS, 5, &vid), VCHIP_E_UNIT);
  EXPECT_EQ(vid, 0);
}

TEST_F(DefaultVlan, LeadingArgumentIsIgnored) {
  for (uint32_t lead : {1u, 0xFFFFFFFFu}) {
    uint16_t vid = 7;
    EXPECT_EQ(user_port_untagged_vlan_set(lead, 1, 5, 20), 0);
    EXPECT_EQ(user_port_untagged_vlan_get(lead, 1, 5, &vid), 0);
    EXPECT_EQ(vid, 20);
  }
}

TEST_F(FrameLength, SetWritesBothSpeedClasses) {
  EXPECT_EQ(user_port_jumboframe_set(0, 1, -99, 9000), 0);
  EXPECT_CALLS("rtk_switch_maxPktLenLinkSpeed_set(unit=1, speed_class=1, length=9000) = 0",
               "rtk_switch_maxPktLenLinkSpeed_set(unit=1, speed_class=0, length=9000) = 0");
  EXPECT_EQ(vchip::switch_wide(1).max_length, (std::vector<uint32_t>{9000, 9000}));
  EXPECT_EQ(vchip::switch_wide(0).max_length, (std::vector<uint32_t>{1518, 1518}));
}

TEST_F(FrameLength, SetReturnsTheOrOfBothResults) {
  const int32_t results[][3] = {
      {-5, 0, -5}, {0, -5, -5}, {-8, -3, -8 | -3}, {2, 4, 6}, {-8, 3, -5}};
  for (const auto &test : results) {
    swprobe::clear_plan();
    swprobe::answer("rtk_switch_maxPktLenLinkSpeed_set", 1, {test[0], {}});
    swprobe::answer("rtk_switch_maxPktLenLinkSpeed_set", 2, {test[1], {}});
    swprobe::forget();
    EXPECT_EQ(user_port_jumboframe_set(0, 1, 5, 9000), test[2]);
    EXPECT_EQ(swprobe::take().size(), 2u);
  }
}

TEST_F(FrameLength, GetReadsSpeedClassOne) {
  ASSERT_EQ(rtk_switch_maxPktLenLinkSpeed_set(1, 1, 2000), 0);
  swprobe::forget();
  uint32_t length = 7;
  EXPECT_EQ(user_port_jumboframe_get(0, 1, -99, &length), 0);
  EXPECT_EQ(length, 2000u);
  EXPECT_CALLS("rtk_switch_maxPktLenLinkSpeed_get(unit=1, speed_class=1, length=>2000) = 0");
  length = 7;
  for (int64_t result : {-5, 5}) {
    chip_answers("rtk_switch_maxPktLenLinkSpeed_get", result);
    EXPECT_EQ(user_port_jumboframe_get(99, 1, 5, &length), result);
    EXPECT_EQ(length, 7u);
  }
}

TEST_F(FrameLength, AnyLengthIsHandedOn) {
  chip_answers("rtk_switch_maxPktLenLinkSpeed_set", 0);
  for (uint32_t length : {0u, 1u, 0xFFFFFFFFu}) {
    swprobe::forget();
    EXPECT_EQ(user_port_jumboframe_set(99, 1, 5, length), 0);
    for (const auto &call : swprobe::take())
      EXPECT_EQ(static_cast<uint32_t>(call.in("length")), length);
  }
}

}  // namespace
