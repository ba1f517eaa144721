// SPDX-License-Identifier: MIT
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

#include "private_chip.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using vchip::EgressView;

// All fields different, so that a mix-up shows.
constexpr chip_vlan_egress_entry kEntry = {1, 0, 10, 1, 77, 6, 7, 0, 5, 110, 111, 200, 113, 114};
const EgressView kView = {3, false, 10, true, 77, false, 5, 200, {6, 7, 110, 111, 113, 114}};

class Conversion : public vchip_test::PrivateChip {
 protected:
  void expect_refused(int32_t result, const chip_vlan_egress_entry &entry) {
    EXPECT_EQ(rtk_vlan_egrVlanCnvtEntry_set(0, 3, &entry), result);
    EXPECT_THAT(vchip::egress_entries(0), SizeIs(0));
  }
};

TEST_F(Conversion, StartsWithoutEntriesAndWithModesThatNobodySets) {
  for (const uint32_t unit : {0u, 1u}) {
    EXPECT_THAT(vchip::egress_entries(unit), SizeIs(0));
    EXPECT_THAT(vchip::ingress_block_modes(unit), ElementsAre(0u, 1u, 2u));
  }
}

TEST_F(Conversion, KeepsEntriesWithEveryField) {
  EXPECT_EQ(rtk_vlan_egrVlanCnvtEntry_set(1, 3, &kEntry), 0);
  EXPECT_THAT(vchip::egress_entries(1), ElementsAre(kView));
  EXPECT_THAT(vchip::egress_entries(0), SizeIs(0));
  EXPECT_EQ(rtk_vlan_egrVlanCnvtEntry_set(1, 0, &kEntry), 0);
  EXPECT_EQ(rtk_vlan_egrVlanCnvtEntry_set(1, 511, &kEntry), 0);
  EXPECT_THAT(vchip::egress_entries(1), SizeIs(3));
}

TEST_F(Conversion, DropsAnEntryThatBecomesInvalid) {
  ASSERT_EQ(rtk_vlan_egrVlanCnvtEntry_set(0, 3, &kEntry), 0);
  const chip_vlan_egress_entry empty = {0, 1, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0};
  EXPECT_EQ(rtk_vlan_egrVlanCnvtEntry_set(0, 3, &empty), 0);
  EXPECT_THAT(vchip::egress_entries(0), SizeIs(0));
}

TEST_F(Conversion, RefusesWhatNoEntryCanHold) {
  chip_vlan_egress_entry entry = kEntry;
  entry.valid = 2;
  expect_refused(VCHIP_E_VALUE, entry);
  entry = kEntry;
  entry.ignore_vid = 2;
  expect_refused(VCHIP_E_VALUE, entry);
  entry = kEntry;
  entry.ignore_second_key = 2;
  expect_refused(VCHIP_E_VALUE, entry);
  entry = kEntry;
  entry.ignore_port = 2;
  expect_refused(VCHIP_E_VALUE, entry);
  entry = kEntry;
  entry.vid = 4096;
  expect_refused(VCHIP_E_VALUE, entry);
  entry = kEntry;
  entry.new_vid = 4096;
  expect_refused(VCHIP_E_VALUE, entry);
  entry = kEntry;
  entry.port = 29;
  expect_refused(VCHIP_E_PORT, entry);
}

TEST_F(Conversion, DoesNotLookAtKeysThatAreIgnored) {
  chip_vlan_egress_entry entry = kEntry;
  entry.ignore_vid = 1;
  entry.vid = 4096;
  entry.ignore_port = 1;
  entry.port = 29;
  EXPECT_EQ(rtk_vlan_egrVlanCnvtEntry_set(0, 3, &entry), 0);
  EXPECT_THAT(vchip::dump_json(-1),
              HasSubstr(R"({"index":3,"port":null,"vid":null,"second_key":null,"new_vid":200,)"));
}

TEST_F(Conversion, RefusesUnitsIndexesAndNull) {
  EXPECT_EQ(rtk_vlan_egrVlanCnvtEntry_set(2, 3, &kEntry), VCHIP_E_UNIT);
  EXPECT_EQ(rtk_vlan_egrVlanCnvtEntry_set(0, 512, &kEntry), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_vlan_egrVlanCnvtEntry_set(0, 0xFFFFFFFF, &kEntry), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_vlan_egrVlanCnvtEntry_set(0, 3, nullptr), VCHIP_E_NULL);
  EXPECT_THAT(vchip::egress_entries(0), SizeIs(0));
}

TEST_F(Conversion, KeepsTheModeOfEachIngressBlock) {
  EXPECT_EQ(rtk_vlan_igrVlanCnvtBlkMode_set(1, 0, 2), 0);
  EXPECT_EQ(rtk_vlan_igrVlanCnvtBlkMode_set(1, 2, 0), 0);
  EXPECT_THAT(vchip::ingress_block_modes(1), ElementsAre(2u, 1u, 0u));
  EXPECT_THAT(vchip::ingress_block_modes(0), ElementsAre(0u, 1u, 2u));
  EXPECT_EQ(rtk_vlan_igrVlanCnvtBlkMode_set(2, 0, 0), VCHIP_E_UNIT);
  EXPECT_EQ(rtk_vlan_igrVlanCnvtBlkMode_set(0, 3, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_vlan_igrVlanCnvtBlkMode_set(0, 0, 3), VCHIP_E_VALUE);
  EXPECT_THAT(vchip::ingress_block_modes(0), ElementsAre(0u, 1u, 2u));
}

TEST_F(Conversion, IsDumpedWithItsFields) {
  ASSERT_EQ(rtk_vlan_egrVlanCnvtEntry_set(0, 3, &kEntry), 0);
  EXPECT_THAT(vchip::dump_json(-1),
              HasSubstr(R"("conversion":{"egress":[{"index":3,"port":5,"vid":10,"second_key":null,)"
                        R"("new_vid":200,"other_fields":[6,7,110,111,113,114]}],)"
                        R"("ingress_block_modes":[0,1,2]})"));
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_THAT(vchip::egress_entries(0), SizeIs(0));
}

TEST_F(Conversion, ViewsRefuseUnitsThatAreNotThere) {
  EXPECT_THROW(vchip::egress_entries(2), std::out_of_range);
  EXPECT_THROW(vchip::ingress_block_modes(2), std::out_of_range);
}

}  // namespace
