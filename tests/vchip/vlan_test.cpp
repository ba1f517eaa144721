// SPDX-License-Identifier: MIT
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

#include "private_chip.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using vchip::VlanView;
using vchip_test::kUntouched;

constexpr uint32_t kAllPorts = 0x1FFFFFFF;
const VlanView kDefaultVlan = {1, kAllPorts, kAllPorts, 0};

class VlanTable : public vchip_test::PrivateChip {};

TEST_F(VlanTable, HoldsTheDefaultVlanAfterPowerOn) {
  for (const uint32_t unit : {0u, 1u}) {
    EXPECT_THAT(vchip::vlans(unit), ElementsAre(kDefaultVlan));
    EXPECT_THAT(vchip::pvids(unit), Each(1u));
    EXPECT_THAT(vchip::pvids(unit), SizeIs(VCHIP_PORTS));
  }
}

TEST_F(VlanTable, MakesEmptyVlansOnOneUnit) {
  EXPECT_EQ(rtk_vlan_create(1, 4094), 0);
  EXPECT_EQ(rtk_vlan_create(1, 2), 0);
  EXPECT_THAT(vchip::vlans(1),
              ElementsAre(kDefaultVlan, VlanView{2, 0, 0, 0}, VlanView{4094, 0, 0, 0}));
  EXPECT_THAT(vchip::vlans(0), SizeIs(1));
}

TEST_F(VlanTable, LeavesAVlanThatExistsAlone) {
  EXPECT_EQ(rtk_vlan_create(0, 1), VCHIP_VLAN_EXISTS);
  EXPECT_EQ(VCHIP_VLAN_EXISTS, 65540);
  EXPECT_THAT(vchip::vlans(0), ElementsAre(kDefaultVlan));
}

TEST_F(VlanTable, ForgetsThePortsOfADestroyedVlan) {
  EXPECT_EQ(rtk_vlan_destroy(0, 1), 0);
  EXPECT_THAT(vchip::vlans(0), SizeIs(0));
  EXPECT_EQ(rtk_vlan_destroy(0, 1), VCHIP_E_VLAN);
  EXPECT_EQ(rtk_vlan_create(0, 1), 0);
  EXPECT_THAT(vchip::vlans(0), ElementsAre(VlanView{1, 0, 0, 0}));
}

TEST_F(VlanTable, DestroysAllWithAndWithoutTheDefault) {
  const uint32_t ports = 3;
  ASSERT_EQ(rtk_vlan_create(0, 7), 0);
  ASSERT_EQ(rtk_vlan_port_set(0, 1, &ports, &ports), 0);
  ASSERT_EQ(rtk_vlan_create(1, 7), 0);
  EXPECT_EQ(rtk_vlan_destroyAll(0, 2), VCHIP_E_VALUE);
  EXPECT_THAT(vchip::vlans(0), SizeIs(2));
  EXPECT_EQ(rtk_vlan_destroyAll(0, 1), 0);
  EXPECT_THAT(vchip::vlans(0), ElementsAre(kDefaultVlan));
  EXPECT_EQ(rtk_vlan_destroyAll(0, 0), 0);
  EXPECT_THAT(vchip::vlans(0), SizeIs(0));
  EXPECT_THAT(vchip::vlans(1), SizeIs(2));
}

TEST_F(VlanTable, AddsAndRemovesPorts) {
  ASSERT_EQ(rtk_vlan_create(0, 10), 0);
  EXPECT_EQ(rtk_vlan_port_add(0, 10, 0, 1), 0);
  EXPECT_EQ(rtk_vlan_port_add(0, 10, 28, 0), 0);
  EXPECT_EQ(rtk_vlan_port_add(0, 10, 5, 1), 0);
  EXPECT_EQ(vchip::vlans(0)[1], (VlanView{10, 0x10000021, 0x21, 0}));
  // Added again the other way, it changes over.
  EXPECT_EQ(rtk_vlan_port_add(0, 10, 5, 0), 0);
  EXPECT_EQ(rtk_vlan_port_del(0, 10, 0), 0);
  EXPECT_EQ(vchip::vlans(0)[1], (VlanView{10, 0x10000020, 0, 0}));
  // Removing one that is not there is no fault.
  EXPECT_EQ(rtk_vlan_port_del(0, 10, 0), 0);
}

TEST_F(VlanTable, SetsAndReadsTheMasksAsTheyAre) {
  const uint32_t member = 0x10000003;
  const uint32_t untagged = 0x6;
  ASSERT_EQ(rtk_vlan_create(1, 10), 0);
  EXPECT_EQ(rtk_vlan_port_set(1, 10, &member, &untagged), 0);
  EXPECT_EQ(vchip::vlans(1)[1], (VlanView{10, member, untagged, 0}));
  uint32_t read[2] = {kUntouched, kUntouched};
  EXPECT_EQ(rtk_vlan_port_get(1, 10, &read[0], &read[1]), 0);
  EXPECT_THAT(read, ElementsAre(member, untagged));
}

TEST_F(VlanTable, RefusesVlanIdsThatTheStandardKeeps) {
  const uint32_t ports = 0;
  uint32_t word[2] = {kUntouched, kUntouched};
  for (const uint32_t vid : {0u, 4095u, 4096u, 0xFFFFu, 0xFFFFFFFFu}) {
    EXPECT_EQ(rtk_vlan_create(0, vid), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_vlan_destroy(0, vid), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_vlan_port_add(0, vid, 0, 0), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_vlan_port_del(0, vid, 0), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_vlan_port_get(0, vid, &word[0], &word[1]), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_vlan_port_set(0, vid, &ports, &ports), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_vlan_portPvid_set(0, 0, vid), VCHIP_E_VALUE);
  }
  EXPECT_THAT(word, ElementsAre(kUntouched, kUntouched));
  EXPECT_THAT(vchip::vlans(0), ElementsAre(kDefaultVlan));
}

TEST_F(VlanTable, RefusesVlansThatAreNotThere) {
  const uint32_t ports = 1;
  uint32_t word[2] = {kUntouched, kUntouched};
  EXPECT_EQ(rtk_vlan_port_add(0, 9, 0, 0), VCHIP_E_VLAN);
  EXPECT_EQ(rtk_vlan_port_del(0, 9, 0), VCHIP_E_VLAN);
  EXPECT_EQ(rtk_vlan_port_get(0, 9, &word[0], &word[1]), VCHIP_E_VLAN);
  EXPECT_EQ(rtk_vlan_port_set(0, 9, &ports, &ports), VCHIP_E_VLAN);
  EXPECT_THAT(word, ElementsAre(kUntouched, kUntouched));
  EXPECT_THAT(vchip::vlans(0), ElementsAre(kDefaultVlan));
}

TEST_F(VlanTable, RefusesPortsThatTheUnitDoesNotHave) {
  const uint32_t good = 1;
  uint32_t word = kUntouched;
  for (const int32_t port : {-1, 29, 31, 32}) {
    EXPECT_EQ(rtk_vlan_port_add(0, 1, port, 0), VCHIP_E_PORT);
    EXPECT_EQ(rtk_vlan_port_del(0, 1, port), VCHIP_E_PORT);
    EXPECT_EQ(rtk_vlan_portPvid_set(0, port, 1), VCHIP_E_PORT);
    EXPECT_EQ(rtk_vlan_portPvid_get(0, port, &word), VCHIP_E_PORT);
  }
  for (const uint32_t bad : {1u << 29, 1u << 31}) {
    EXPECT_EQ(rtk_vlan_port_set(0, 1, &bad, &good), VCHIP_E_PORT);
    EXPECT_EQ(rtk_vlan_port_set(0, 1, &good, &bad), VCHIP_E_PORT);
  }
  EXPECT_EQ(word, kUntouched);
  EXPECT_THAT(vchip::vlans(0), ElementsAre(kDefaultVlan));
}

TEST_F(VlanTable, RefusesUnitsNullAddressesAndFlags) {
  uint32_t word = kUntouched;
  EXPECT_EQ(rtk_vlan_create(2, 5), VCHIP_E_UNIT);
  EXPECT_EQ(rtk_vlan_destroy(2, 1), VCHIP_E_UNIT);
  EXPECT_EQ(rtk_vlan_destroyAll(2, 1), VCHIP_E_UNIT);
  EXPECT_EQ(rtk_vlan_port_add(2, 1, 0, 0), VCHIP_E_UNIT);
  EXPECT_EQ(rtk_vlan_port_del(2, 1, 0), VCHIP_E_UNIT);
  EXPECT_EQ(rtk_vlan_port_get(2, 1, &word, &word), VCHIP_E_UNIT);
  EXPECT_EQ(rtk_vlan_port_set(2, 1, &word, &word), VCHIP_E_UNIT);
  EXPECT_EQ(rtk_vlan_portPvid_get(2, 0, &word), VCHIP_E_UNIT);
  EXPECT_EQ(rtk_vlan_portPvid_set(2, 0, 1), VCHIP_E_UNIT);
  EXPECT_EQ(rtk_vlan_port_get(0, 1, nullptr, &word), VCHIP_E_NULL);
  EXPECT_EQ(rtk_vlan_port_get(0, 1, &word, nullptr), VCHIP_E_NULL);
  EXPECT_EQ(rtk_vlan_port_set(0, 1, nullptr, &word), VCHIP_E_NULL);
  EXPECT_EQ(rtk_vlan_port_set(0, 1, &word, nullptr), VCHIP_E_NULL);
  EXPECT_EQ(rtk_vlan_portPvid_get(0, 0, nullptr), VCHIP_E_NULL);
  EXPECT_EQ(rtk_vlan_port_add(0, 1, 0, 2), VCHIP_E_VALUE);
  EXPECT_EQ(word, kUntouched);
}

TEST_F(VlanTable, KeepsADefaultVlanPerPort) {
  EXPECT_EQ(rtk_vlan_portPvid_set(1, 28, 4094), 0);
  EXPECT_EQ(rtk_vlan_portPvid_set(1, 3, 7), 0);
  const auto pvids = vchip::pvids(1);
  EXPECT_EQ(pvids[28], 4094u);
  EXPECT_EQ(pvids[3], 7u);
  EXPECT_EQ(pvids[4], 1u);
  EXPECT_THAT(vchip::pvids(0), Each(1u));
  uint32_t pvid = kUntouched;
  EXPECT_EQ(rtk_vlan_portPvid_get(1, 3, &pvid), 0);
  EXPECT_EQ(pvid, 7u);
}

TEST_F(VlanTable, IsResetAndDumped) {
  const uint32_t member = 0x10000003;
  const uint32_t untagged = 2;
  ASSERT_EQ(rtk_vlan_create(1, 10), 0);
  ASSERT_EQ(rtk_vlan_port_set(1, 10, &member, &untagged), 0);
  ASSERT_EQ(rtk_vlan_portPvid_set(1, 2, 10), 0);
  const std::string dump = vchip::dump_json(-1);
  EXPECT_THAT(dump, HasSubstr(R"({"vid":10,"member":[0,1,28],"untagged":[1],"stg":0})"));
  EXPECT_THAT(dump, HasSubstr(R"("pvid":[1,1,10,1,)"));
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_THAT(vchip::vlans(1), ElementsAre(kDefaultVlan));
  EXPECT_THAT(vchip::pvids(1), Each(1u));
}

TEST_F(VlanTable, ViewsRefuseUnitsThatAreNotThere) {
  EXPECT_THROW(vchip::vlans(2), std::out_of_range);
  EXPECT_THROW(vchip::pvids(2), std::out_of_range);
}

TEST_F(VlanTable, HasSentencesForItsResults) {
  EXPECT_STREQ(vchip_result_text(VCHIP_E_VLAN), "there is no such VLAN");
  EXPECT_STREQ(vchip_result_text(VCHIP_VLAN_EXISTS), "the VLAN exists already");
}

}  // namespace
