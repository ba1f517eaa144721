// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <gmock/gmock.h>
#include <stdexcept>

#include "private_chip.h"

namespace {

using vchip::DefaultsView;

class Defaults : public vchip_test::PrivateChip {};

const DefaultsView kPowerOn = {true, {0, 0, 0, 0, 0, 0}, 1, true};

TEST_F(Defaults, StartUnlikeWhatProgramsSet) {
  EXPECT_EQ(vchip::defaults(0), kPowerOn);
  EXPECT_EQ(vchip::defaults(1), kPowerOn);
}

TEST_F(Defaults, AreKeptPerUnitAndReset) {
  EXPECT_EQ(rtk_l2_zeroSALearningEnable_set(1, 0), 0);
  EXPECT_EQ(rtk_l2_lookupMissFloodPortMaskIdx_set(1, 5, 7), 0);
  EXPECT_EQ(rtk_qos_1pDfltPriSrcSel_set(1, 0), 0);
  EXPECT_EQ(rtk_acl_meterIncludeIfg_set(1, 0), 0);
  EXPECT_EQ(vchip::defaults(1), (DefaultsView{false, {0, 0, 0, 0, 0, 7}, 0, false}));
  EXPECT_EQ(vchip::defaults(0), kPowerOn);
  EXPECT_THAT(vchip::dump_json(-1), testing::HasSubstr(R"("defaults":{"zero_source_learned":false,)"
                                                       R"("priority_source":0,)"
                                                       R"("meters_count_gap":false})"));
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_EQ(vchip::defaults(1), kPowerOn);
}

TEST_F(Defaults, HaveRanges) {
  EXPECT_EQ(rtk_l2_zeroSALearningEnable_set(0, 2), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_l2_lookupMissFloodPortMaskIdx_set(0, 6, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_l2_lookupMissFloodPortMaskIdx_set(0, 0, 8), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_qos_1pDfltPriSrcSel_set(0, 2), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_acl_meterIncludeIfg_set(0, 2), VCHIP_E_VALUE);
  EXPECT_EQ(vchip::defaults(0), kPowerOn);
  EXPECT_THROW(vchip::defaults(2), std::out_of_range);
}

}  // namespace
