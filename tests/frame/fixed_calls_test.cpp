// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/field.h>
#include <swctl/frame.h>
#include <swctl/qos.h>

#include "support/library_test.h"

namespace {

using FixedCalls = swctl_test::LibraryTest;
using swctl_test::chip_answers;
using vchip::DefaultsView;

const DefaultsView kPowerOn = {true, {0, 0, 0, 0, 0, 0}, 1, true};

TEST_F(FixedCalls, SwitchActionInitStopsLearningOfTheZeroAddress) {
  EXPECT_EQ(user_switch_action_init(1), 0);
  EXPECT_CALLS("rtk_l2_zeroSALearningEnable_set(unit=1, enable=0) = 0");
  EXPECT_EQ(vchip::defaults(1), (DefaultsView{false, {0, 0, 0, 0, 0, 0}, 1, true}));
  EXPECT_EQ(vchip::defaults(0), kPowerOn);
}

TEST_F(FixedCalls, UlfFloodIndexInitChoosesTheMaskOfUnknownAddresses) {
  EXPECT_EQ(user_ulf_flood_index_init(1), 0);
  EXPECT_CALLS("rtk_l2_lookupMissFloodPortMaskIdx_set(unit=1, type=2, index=5) = 0");
  EXPECT_EQ(vchip::defaults(1), (DefaultsView{true, {0, 0, 5, 0, 0, 0}, 1, true}));
  EXPECT_EQ(vchip::defaults(0), kPowerOn);
}

TEST_F(FixedCalls, DefaultCosSourceGoesToUnitZero) {
  for (const uint32_t unit : {0u, 1u, 0xFFFFFFFFu}) {
    EXPECT_EQ(user_qos_default_cos_src_init(unit), 0);
    EXPECT_CALLS("rtk_qos_1pDfltPriSrcSel_set(unit=0, source=0) = 0");
  }
  EXPECT_EQ(vchip::defaults(0), (DefaultsView{true, {0, 0, 0, 0, 0, 0}, 0, true}));
  EXPECT_EQ(vchip::defaults(1), kPowerOn);
}

TEST_F(FixedCalls, MeterGapGoesToUnitZero) {
  for (const uint32_t unit : {0u, 1u, 0xFFFFFFFFu}) {
    EXPECT_EQ(user_field_meter_ifg_exclude_init(unit), 0);
    EXPECT_CALLS("rtk_acl_meterIncludeIfg_set(unit=0, include=0) = 0");
  }
  EXPECT_EQ(vchip::defaults(0), (DefaultsView{true, {0, 0, 0, 0, 0, 0}, 1, false}));
  EXPECT_EQ(vchip::defaults(1), kPowerOn);
}

TEST_F(FixedCalls, PassEveryResultOn) {
  for (const int32_t result : {7, 0, -1, -1002, INT32_MIN}) {
    swprobe::clear_plan();
    chip_answers("rtk_l2_zeroSALearningEnable_set", result);
    chip_answers("rtk_l2_lookupMissFloodPortMaskIdx_set", result);
    chip_answers("rtk_qos_1pDfltPriSrcSel_set", result);
    chip_answers("rtk_acl_meterIncludeIfg_set", result);
    EXPECT_EQ(user_switch_action_init(1), result);
    EXPECT_EQ(user_ulf_flood_index_init(1), result);
    EXPECT_EQ(user_qos_default_cos_src_init(1), result);
    EXPECT_EQ(user_field_meter_ifg_exclude_init(1), result);
  }
}

TEST_F(FixedCalls, PassTheUnitOnAndPrintNothing) {
  const auto both = [] {
    EXPECT_EQ(user_switch_action_init(VCHIP_UNITS), VCHIP_E_UNIT);
    EXPECT_EQ(user_ulf_flood_index_init(VCHIP_UNITS), VCHIP_E_UNIT);
  };
  EXPECT_PRINTED(swctl_test::printed_by(both), "", "");
}

}  // namespace
