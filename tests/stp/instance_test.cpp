// SPDX-License-Identifier: MIT
// Making groups, and the VLANs in them.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/stp.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using StgInstance = swctl_test::LibraryTest;

constexpr int64_t kResults[] = {0, 4, -1, -1061, INT32_MIN, INT32_MAX};

uint32_t stg_of(uint32_t unit, uint32_t vid) {
  for (const vchip::VlanView &vlan : vchip::vlans(unit))
    if (vlan.vid == vid) return vlan.stg;
  return UINT32_MAX;
}

TEST_F(StgInstance, IsMadeAndDestroyedOnTheNamedUnit) {
  EXPECT_EQ(user_stg_create_id(9, 1, 5), 0);
  ASSERT_EQ(vchip::stp_instances(1).size(), 2u);
  EXPECT_EQ(vchip::stp_instances(1)[1].instance, 5u);
  EXPECT_EQ(vchip::stp_instances(0).size(), 1u);
  EXPECT_EQ(user_stg_create_id(9, 1, 5), VCHIP_E_INSTANCE_EXISTS);
  EXPECT_EQ(user_stg_destroy(9, 1, 5), 0);
  EXPECT_EQ(vchip::stp_instances(1).size(), 1u);
  EXPECT_CALLS("rtk_stp_mstpInstance_create(unit=1, instance=5) = 0",
               "rtk_stp_mstpInstance_create(unit=1, instance=5) = -1062",
               "rtk_stp_mstpInstance_destroy(unit=1, instance=5) = 0");
}

TEST_F(StgInstance, AnyNumberAndAnyResultPassThrough) {
  for (const int64_t result : kResults) {
    chip_answers("rtk_stp_mstpInstance_create", result);
    chip_answers("rtk_stp_mstpInstance_destroy", result);
    swprobe::forget();
    EXPECT_EQ(user_stg_create_id(0, 0xFFFFFFFF, 0x80000000), result);
    EXPECT_EQ(user_stg_destroy(0, 0xFFFFFFFF, 0x80000000), result);
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 2u);
    for (const swprobe::Call &call : calls) {
      EXPECT_EQ(call.in("unit"), 0xFFFFFFFF);
      EXPECT_EQ(call.in("instance"), 0x80000000);
    }
  }
}

TEST_F(StgInstance, ExistenceIsReadThroughTheCallersAddress) {
  ASSERT_EQ(rtk_stp_mstpInstance_create(1, 3), 0);
  uint32_t exists = 99;
  swprobe::forget();
  EXPECT_EQ(user_stp_isMstpInstanceExist_get(0, 1, 3, &exists), 0);
  EXPECT_EQ(exists, 1u);
  EXPECT_EQ(user_stp_isMstpInstanceExist_get(0, 0, 3, &exists), 0);
  EXPECT_EQ(exists, 0u);
  EXPECT_CALLS("rtk_stp_isMstpInstanceExist_get(unit=1, instance=3, exists=>1) = 0",
               "rtk_stp_isMstpInstanceExist_get(unit=0, instance=3, exists=>0) = 0");
}

TEST_F(StgInstance, ExistenceIsLeftToTheSdkOnFailure) {
  uint32_t exists = 99;
  EXPECT_EQ(user_stp_isMstpInstanceExist_get(0, 0, 16, &exists), VCHIP_E_INDEX);
  EXPECT_EQ(exists, 99u);
  for (const int64_t result : kResults) {
    chip_answers("rtk_stp_isMstpInstanceExist_get", result, {{"exists", 41}});
    exists = 99;
    EXPECT_EQ(user_stp_isMstpInstanceExist_get(0, 0, 1, &exists), result);
    EXPECT_EQ(exists, 41u);
  }
}

TEST_F(StgInstance, VlansGoInAndComeBackToGroupZero) {
  ASSERT_EQ(rtk_vlan_create(1, 100), 0);
  ASSERT_EQ(rtk_stp_mstpInstance_create(1, 6), 0);
  swprobe::forget();
  EXPECT_EQ(user_stg_vlan_add(7, 1, 6, 100), 0);
  EXPECT_EQ(stg_of(1, 100), 6u);
  // The group that is named does not matter.
  EXPECT_EQ(user_stg_vlan_remove(7, 1, 5, 100), 0);
  EXPECT_EQ(stg_of(1, 100), 0u);
  EXPECT_CALLS("rtk_vlan_stg_set(unit=1, vid=100, instance=6) = 0",
               "rtk_vlan_stg_set(unit=1, vid=100, instance=0) = 0");
}

TEST_F(StgInstance, OnlySixteenBitsOfAVlanCount) {
  for (const int64_t result : kResults) {
    chip_answers("rtk_vlan_stg_set", result);
    swprobe::forget();
    EXPECT_EQ(user_stg_vlan_add(0, 1, 9, 0x1000A), result);
    EXPECT_EQ(user_stg_vlan_remove(0, 1, 9, 0xFFFF000B), result);
    EXPECT_EQ(user_stg_vlan_add(0, 1, 9, 0xFFFF), result);
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0].in("vid"), 10);
    EXPECT_EQ(calls[0].in("instance"), 9);
    EXPECT_EQ(calls[1].in("vid"), 11);
    EXPECT_EQ(calls[1].in("instance"), 0);
    EXPECT_EQ(calls[2].in("vid"), 0xFFFF);
  }
}

TEST_F(StgInstance, CreateWithoutANumberMakesNothing) {
  EXPECT_EQ(user_stg_create(0, 0, 4), 0);
  EXPECT_NO_CALLS();
  EXPECT_EQ(vchip::stp_instances(0).size(), 1u);
}

TEST_F(StgInstance, PrintsNothing) {
  const auto all = [] {
    uint32_t exists = 0;
    user_stg_create_id(0, 2, 0);
    user_stg_destroy(0, 2, 0);
    user_stg_vlan_add(0, 2, 0, 0);
    user_stg_vlan_remove(0, 2, 0, 0);
    user_stp_isMstpInstanceExist_get(0, 2, 0, &exists);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
