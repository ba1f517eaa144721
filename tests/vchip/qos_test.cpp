// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <gmock/gmock.h>
#include <stdexcept>

#include "private_chip.h"

namespace {

using testing::HasSubstr;
using vchip_test::kUntouched;
using Words = std::vector<uint32_t>;

class Qos : public vchip_test::PrivateChip {};

const vchip::QosPortView kPowerOnPort = {0, 0, 3, 0, Words(8, 127), Words(8, 0), false};

TEST_F(Qos, StartsUnlikeWhatProgramsSet) {
  const vchip::QosView expected = {
      Words(8, 0), Words(8, 0), Words(8, 0), Words(64, 0), Words(8, 0), {4, Words(5, 0)}, 1};
  for (const uint32_t unit : {0u, 1u}) {
    EXPECT_EQ(vchip::qos(unit), expected);
    for (int32_t port = 0; port < VCHIP_PORTS; ++port)
      EXPECT_EQ(vchip::qos_port(unit, port), kPowerOnPort);
  }
}

TEST_F(Qos, KeepsItsMaps) {
  const uint32_t map[] = {7, 6, 5, 4, 3, 2, 1, 0};
  EXPECT_EQ(rtk_qos_outer1pPriRemap_set(1, 2, 0, 3), 0);
  EXPECT_EQ(rtk_qos_outer1pPriRemap_set(1, 2, 1, 4), 0);
  EXPECT_EQ(rtk_qos_1pPriRemap_set(1, 7, 5), 0);
  EXPECT_EQ(rtk_qos_dscpPriRemap_set(1, 63, 6), 0);
  EXPECT_EQ(rtk_qos_priMap_set(1, 8, map), 0);
  EXPECT_EQ(rtk_qos_priSelGroup_set(1, 3, map), 0);
  EXPECT_EQ(rtk_qos_1pRemarkSrcSel_set(1, 0), 0);
  const vchip::QosView view = vchip::qos(1);
  EXPECT_EQ(view.outer_internal, (Words{0, 0, 3, 0, 0, 0, 0, 0}));
  EXPECT_EQ(view.outer_eligible_internal, (Words{0, 0, 4, 0, 0, 0, 0, 0}));
  EXPECT_EQ(view.inner_internal, (Words{0, 0, 0, 0, 0, 0, 0, 5}));
  EXPECT_EQ(view.dscp_internal[63], 6u);
  EXPECT_EQ(view.internal_queue, Words(map, map + 8));
  EXPECT_EQ(view.group_weights[3], Words(map, map + 5));
  EXPECT_EQ(view.remark_source, 0u);
  EXPECT_EQ(vchip::qos(0).internal_queue, Words(8, 0));
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_EQ(vchip::qos(1).group_weights[3], Words(5, 0));
}

TEST_F(Qos, KeepsWhatBelongsToAPort) {
  const uint32_t weights[] = {0, 1, 2, 3, 4, 5, 6, 127};
  EXPECT_EQ(rtk_qos_portOuterPri_set(1, 28, 6), 0);
  EXPECT_EQ(rtk_qos_portInnerPri_set(1, 28, 7), 0);
  EXPECT_EQ(rtk_qos_portPriSelGroup_set(1, 28, 2), 0);
  EXPECT_EQ(rtk_qos_schedulingAlgorithm_set(1, 28, 1), 0);
  EXPECT_EQ(rtk_qos_schedulingQueue_set(1, 28, weights), 0);
  EXPECT_EQ(rtk_qos_queueStrictEnable_set(1, 28, 3, 1), 0);
  EXPECT_EQ(rtk_qos_1pRemarkEnable_set(1, 28, 1), 0);
  EXPECT_EQ(vchip::qos_port(1, 28),
            (vchip::QosPortView{
                6, 7, 2, 1, Words(weights, weights + 8), {0, 0, 0, 1, 0, 0, 0, 0}, true}));
  EXPECT_EQ(vchip::qos_port(0, 28), kPowerOnPort);
  EXPECT_EQ(vchip::qos_port(1, 27), kPowerOnPort);
}

TEST_F(Qos, ReadsWhatItHolds) {
  const uint32_t table[] = {1, 2, 3, 4, 5, 6, 7, 0};
  uint32_t read[8] = {};
  uint32_t word = kUntouched;
  ASSERT_EQ(rtk_qos_priMap_set(0, 8, table), 0);
  EXPECT_EQ(rtk_qos_priMap_get(0, 8, read), 0);
  EXPECT_THAT(read, testing::ElementsAreArray(table));
  ASSERT_EQ(rtk_qos_schedulingQueue_set(0, 4, table), 0);
  EXPECT_EQ(rtk_qos_schedulingQueue_get(0, 4, read), 0);
  EXPECT_THAT(read, testing::ElementsAreArray(table));
  EXPECT_EQ(rtk_qos_schedulingQueue_get(0, 5, read), 0);
  EXPECT_THAT(read, testing::Each(127u));
  ASSERT_EQ(rtk_qos_queueStrictEnable_set(0, 4, 7, 1), 0);
  EXPECT_EQ(rtk_qos_queueStrictEnable_get(0, 4, 7, &word), 0);
  EXPECT_EQ(word, 1u);
  ASSERT_EQ(rtk_qos_schedulingAlgorithm_set(0, 4, 1), 0);
  EXPECT_EQ(rtk_qos_schedulingAlgorithm_get(0, 4, &word), 0);
  EXPECT_EQ(word, 1u);
  ASSERT_EQ(rtk_qos_portOuterPri_set(0, 4, 5), 0);
  EXPECT_EQ(rtk_qos_portOuterPri_get(0, 4, &word), 0);
  EXPECT_EQ(word, 5u);
  ASSERT_EQ(rtk_qos_dscpPriRemap_set(0, 0, 3), 0);
  EXPECT_EQ(rtk_qos_dscpPriRemap_get(0, 0, &word), 0);
  EXPECT_EQ(word, 3u);
}

TEST_F(Qos, HasRanges) {
  const std::string before = vchip::dump_json(-1);
  uint32_t table[8] = {1, 1, 1, 1, 1, 1, 1, 8};
  uint32_t word = kUntouched;
  EXPECT_EQ(rtk_qos_outer1pPriRemap_set(0, 8, 0, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_qos_outer1pPriRemap_set(0, 0, 2, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_qos_outer1pPriRemap_set(0, 0, 0, 8), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_qos_1pPriRemap_set(0, 8, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_qos_1pPriRemap_set(0, 0, 8), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_qos_dscpPriRemap_set(0, 64, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_qos_dscpPriRemap_set(0, 0, 8), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_qos_dscpPriRemap_get(0, 64, &word), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_qos_portOuterPri_set(0, 0, 8), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_qos_portInnerPri_set(0, 0, 8), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_qos_priMap_set(0, 8, table), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_qos_priMap_get(0, 7, &word), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_qos_priSelGroup_set(0, 4, table), VCHIP_E_INDEX);
  table[4] = 8;
  EXPECT_EQ(rtk_qos_priSelGroup_set(0, 0, table), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_qos_portPriSelGroup_set(0, 0, 4), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_qos_queueStrictEnable_set(0, 0, 8, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_qos_queueStrictEnable_set(0, 0, 0, 2), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_qos_queueStrictEnable_get(0, 0, 8, &word), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_qos_schedulingAlgorithm_set(0, 0, 2), VCHIP_E_VALUE);
  table[7] = 128;
  EXPECT_EQ(rtk_qos_schedulingQueue_set(0, 0, table), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_qos_1pRemarkSrcSel_set(0, 2), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_qos_1pRemarkEnable_set(0, 0, 2), VCHIP_E_VALUE);
  EXPECT_EQ(word, kUntouched);
  EXPECT_EQ(vchip::dump_json(-1), before);
}

TEST_F(Qos, IsDumpedByName) {
  const uint32_t weights[] = {3, 2, 2, 1, 1};
  ASSERT_EQ(rtk_qos_priSelGroup_set(0, 2, weights), 0);
  ASSERT_EQ(rtk_qos_schedulingAlgorithm_set(0, 0, 1), 0);
  ASSERT_EQ(rtk_qos_1pRemarkSrcSel_set(0, 0), 0);
  const std::string dump = vchip::dump_json(-1);
  EXPECT_THAT(dump, HasSubstr(R"({"dscp":3,"inner_tag":2,"outer_tag":2,"inner_port":1,)"
                              R"("outer_port":1})"));
  EXPECT_THAT(dump, HasSubstr(R"("remark_source":"internal","ports":[{"port":0,)"
                              R"("outer_priority":0,"inner_priority":0,"group":3,)"
                              R"("algorithm":"wrr","weights":[127,127,127,127,127,127,127,127],)"
                              R"("strict":[0,0,0,0,0,0,0,0],"remarks":false})"));
  EXPECT_THAT(dump, HasSubstr(R"("remark_source":"tag")"));
}

TEST_F(Qos, ViewsOfWhatIsNotThereThrow) {
  EXPECT_THROW(vchip::qos(2), std::out_of_range);
  EXPECT_THROW(vchip::qos_port(2, 0), std::out_of_range);
  EXPECT_THROW(vchip::qos_port(0, 29), std::out_of_range);
  EXPECT_THROW(vchip::qos_port(0, -1), std::out_of_range);
}

}  // namespace
