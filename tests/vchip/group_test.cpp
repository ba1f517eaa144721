// SPDX-License-Identifier: MIT
// Multicast groups and the forwarding port masks that they use.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <gmock/gmock.h>

#include "private_chip.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using vchip::GroupView;

chip_l2_mcast_entry group_of(uint8_t number, uint32_t ports = 6, uint32_t index = 0,
                             uint16_t vid = 10) {
  return {vid, {1, 0, 0x5e, 0, 0, number}, ports, index, {0, 0, 0}};
}

class Groups : public vchip_test::PrivateChip {
 protected:
  static int32_t add(const chip_l2_mcast_entry &entry, uint32_t unit = 0) {
    return rtk_l2_mcastAddr_add(unit, &entry);
  }
  static int32_t remove(uint8_t number) {
    return rtk_l2_mcastAddr_del(0, 10, group_of(number).mac);
  }
  static std::vector<uint32_t> indexes() {
    std::vector<uint32_t> all;
    for (const GroupView &view : vchip::groups(0)) all.push_back(view.forwarding);
    return all;
  }
};

TEST_F(Groups, KeepPortsOnOneUnit) {
  EXPECT_EQ(add(group_of(1, 0x1FFFFFFF), 1), 0);
  EXPECT_THAT(vchip::groups(1), ElementsAre(GroupView{0, 10, "01:00:5e:00:00:01", 0x1FFFFFFF, 1}));
  EXPECT_EQ(vchip::groups(0).size(), 0u);
  chip_l2_mcast_entry read = group_of(1, 0);
  EXPECT_EQ(rtk_l2_mcastAddr_get(1, &read), 0);
  EXPECT_EQ(read.portmask, 0x1FFFFFFFu);
  EXPECT_EQ(read.fwdIndex, 1u);
  EXPECT_EQ(rtk_l2_mcastAddr_get(0, &read), VCHIP_E_L2_ENTRY);
}

TEST_F(Groups, AGroupThatExistsIsRefusedAndStays) {
  ASSERT_EQ(add(group_of(1)), 0);
  EXPECT_EQ(add(group_of(1, 8)), VCHIP_E_L2_EXISTS);
  EXPECT_EQ(add(group_of(1, 8, 0, 20)), 0) << "another VLAN is another group";
  EXPECT_EQ(vchip::groups(0).at(0).portmask, 6u);
}

TEST_F(Groups, ForwardingIndexIsTheOneWantedOrTheLowestFree) {
  ASSERT_EQ(add(group_of(1)), 0);
  ASSERT_EQ(add(group_of(2, 6, 2)), 0);
  ASSERT_EQ(add(group_of(3)), 0);
  ASSERT_EQ(add(group_of(4, 6, 511)), 0);
  ASSERT_EQ(add(group_of(5, 6, 511)), 0) << "in use: another one";
  EXPECT_THAT(indexes(), ElementsAre(1u, 2u, 3u, 511u, 4u));
  ASSERT_EQ(remove(2), 0);
  ASSERT_EQ(add(group_of(6)), 0);
  EXPECT_THAT(indexes(), ElementsAre(1u, 2u, 3u, 511u, 4u));
}

TEST_F(Groups, RefusesWhatNoGroupCanHold) {
  EXPECT_EQ(add(group_of(1, 1u << 29)), VCHIP_E_PORT);
  EXPECT_EQ(add(group_of(1, 6, 512)), VCHIP_E_INDEX);
  EXPECT_EQ(add(group_of(1, 6, 0, 4096)), VCHIP_E_VALUE);
  chip_l2_mcast_entry station = group_of(1);
  station.mac[0] = 2;
  EXPECT_EQ(add(station), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_l2_mcastAddr_get(0, &station), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_l2_mcastAddr_del(0, 10, station.mac), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_l2_mcastAddr_del(0, 4096, group_of(1).mac), VCHIP_E_VALUE);
  EXPECT_EQ(remove(1), VCHIP_E_L2_ENTRY);
  EXPECT_EQ(vchip::groups(0).size(), 0u);
}

TEST_F(Groups, TableIsFullAtFiveHundredAndEleven) {
  for (uint16_t vid = 0; vid < 511; ++vid) ASSERT_EQ(add(group_of(1, 6, 0, vid)), 0);
  EXPECT_EQ(add(group_of(2)), VCHIP_E_L2_FULL);
  EXPECT_EQ(vchip::groups(0).size(), 511u);
}

TEST_F(Groups, AreScannedInOrder) {
  for (const uint8_t number : {uint8_t{9}, uint8_t{1}, uint8_t{5}})
    ASSERT_EQ(add(group_of(number)), 0);
  ASSERT_EQ(remove(1), 0);
  int32_t index = -1;
  chip_l2_mcast_entry entry = {};
  ASSERT_EQ(rtk_l2_nextValidMcastAddr_get(0, &index, &entry), 0);
  EXPECT_EQ(entry.mac[5], 9);
  ASSERT_EQ(rtk_l2_nextValidMcastAddr_get(0, &index, &entry), 0);
  EXPECT_EQ(entry.mac[5], 5);
  EXPECT_EQ(rtk_l2_nextValidMcastAddr_get(0, &index, &entry), VCHIP_E_L2_ENTRY);
  EXPECT_EQ(index, 2);
  for (int32_t bad : {-2, 511}) {
    EXPECT_EQ(rtk_l2_nextValidMcastAddr_get(0, &bad, &entry), VCHIP_E_INDEX);
  }
}

TEST_F(Groups, AreDumpedWithTheirPorts) {
  ASSERT_EQ(add(group_of(1, 0x10000005, 3)), 0);
  EXPECT_THAT(vchip::dump_json(-1),
              HasSubstr(R"("group":[{"index":0,"vid":10,"mac":"01:00:5e:00:00:01",)"
                        R"("ports":[0,2,28],"forwarding":3}])"));
}

}  // namespace
