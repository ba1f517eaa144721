// SPDX-License-Identifier: MIT
// Priorities of tags, code points and ports, and the queues they lead to.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/qos.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using QosPriority = swctl_test::LibraryTest;
using Words = std::vector<uint32_t>;

constexpr const char *kOuterRemap = "rtk_qos_outer1pPriRemap_set";
constexpr const char *kInnerRemap = "rtk_qos_1pPriRemap_set";
constexpr int64_t kPassedOn[] = {0, 3, -1, -1004, INT32_MIN, INT32_MAX};

TEST_F(QosPriority, RemapWritesBothOuterMapsAndTheInnerOne) {
  EXPECT_EQ(user_qos_pri_remap_set(1, 5, 2), 0);
  EXPECT_CALLS("rtk_qos_outer1pPriRemap_set(unit=1, priority=5, dei=0, internal=2) = 0",
               "rtk_qos_outer1pPriRemap_set(unit=1, priority=5, dei=1, internal=2) = 0",
               "rtk_qos_1pPriRemap_set(unit=1, priority=5, internal=2) = 0");
  const Words expected = {0, 0, 0, 0, 0, 2, 0, 0};
  EXPECT_EQ(vchip::qos(1).outer_internal, expected);
  EXPECT_EQ(vchip::qos(1).outer_eligible_internal, expected);
  EXPECT_EQ(vchip::qos(1).inner_internal, expected);
  EXPECT_EQ(vchip::qos(0).inner_internal, Words(8, 0));
}

TEST_F(QosPriority, RemapStopsAtTheFirstNegativeResult) {
  for (const int64_t result : {-1, -1005}) {
    for (const uint64_t nth : {1, 2}) {
      swprobe::clear_plan();
      swprobe::answer(kOuterRemap, nth, {result, {}});
      swprobe::forget();
      EXPECT_EQ(user_qos_pri_remap_set(0, 1, 1), result);
      EXPECT_EQ(swprobe::take().size(), nth);
    }
  }
  swprobe::clear_plan();
  chip_answers(kInnerRemap, -7);
  swprobe::forget();
  EXPECT_EQ(user_qos_pri_remap_set(0, 1, 1), -7);
  EXPECT_EQ(swprobe::take().size(), 3u);
}

TEST_F(QosPriority, RemapGoesOnAfterAPositiveResult) {
  chip_answers(kOuterRemap, 4);
  chip_answers(kInnerRemap, 6);
  swprobe::forget();
  EXPECT_EQ(user_qos_pri_remap_set(0, 1, 1), 6);
  EXPECT_EQ(swprobe::take().size(), 3u);
}

TEST_F(QosPriority, QueueMapSetWidensEightBytes) {
  const uint8_t queues[] = {7, 6, 5, 4, 3, 2, 1, 0};
  EXPECT_EQ(user_qos_pri_queue_map_set(queues), 0);
  EXPECT_CALLS("rtk_qos_priMap_set(unit=0, queues=8, map=[7 6 5 4 3 2 1 0]) = 0");
  EXPECT_EQ(vchip::qos(0).internal_queue, (Words{7, 6, 5, 4, 3, 2, 1, 0}));
  EXPECT_EQ(vchip::qos(1).internal_queue, Words(8, 0));
}

TEST_F(QosPriority, QueueMapSetPassesBytesAndResultsAsTheyAre) {
  const uint8_t queues[] = {255, 128, 127, 0, 1, 2, 3, 200};
  for (const int64_t result : kPassedOn) {
    chip_answers("rtk_qos_priMap_set", result);
    swprobe::forget();
    EXPECT_EQ(user_qos_pri_queue_map_set(queues), result);
    EXPECT_CALLS("rtk_qos_priMap_set(unit=0, queues=8, map=[255 128 127 0 1 2 3 200]) = " +
                 std::to_string(result) + " !");
  }
}

TEST_F(QosPriority, QueueMapGetReadsOneQueue) {
  const uint32_t map[] = {1, 3, 5, 7, 0, 2, 4, 6};
  ASSERT_EQ(rtk_qos_priMap_set(0, 8, map), 0);
  swprobe::forget();
  for (uint32_t priority = 0; priority < 8; ++priority) {
    uint32_t queue = 99;
    EXPECT_EQ(user_qos_pri_queue_map_get(priority, &queue), 0);
    EXPECT_EQ(queue, map[priority]);
    EXPECT_CALLS("rtk_qos_priMap_get(unit=0, queues=8, map=>[1 3 5 7 0 2 4 6]) = 0");
  }
}

TEST_F(QosPriority, QueueMapGetRefusesOtherPriorities) {
  for (const uint32_t priority : {8u, 9u, 0x80000000u, UINT32_MAX}) {
    uint32_t queue = 99;
    EXPECT_EQ(user_qos_pri_queue_map_get(priority, &queue), -1);
    EXPECT_EQ(queue, 99u);
  }
  EXPECT_NO_CALLS();
}

TEST_F(QosPriority, QueueMapGetStoresWhateverTheReadLeft) {
  uint32_t queue = 99;
  chip_answers("rtk_qos_priMap_get", -5);
  EXPECT_EQ(user_qos_pri_queue_map_get(3, &queue), -5);
  EXPECT_EQ(queue, 0u);
  chip_answers("rtk_qos_priMap_get", -6, {{"map[3]", 41}});
  EXPECT_EQ(user_qos_pri_queue_map_get(3, &queue), -6);
  EXPECT_EQ(queue, 41u);
  chip_answers("rtk_qos_priMap_get", 2, {{"map[7]", 43}});
  EXPECT_EQ(user_qos_pri_queue_map_get(7, &queue), 2);
  EXPECT_EQ(queue, 43u);
}

TEST_F(QosPriority, DscpMapReachesTheChip) {
  EXPECT_EQ(user_qos_dscp_map_set(46, 5), 0);
  EXPECT_EQ(vchip::qos(0).dscp_internal[46], 5u);
  EXPECT_EQ(vchip::qos(0).dscp_internal[45], 0u);
  EXPECT_EQ(vchip::qos(1).dscp_internal[46], 0u);
  uint32_t priority = 99;
  EXPECT_EQ(user_qos_dscp_map_get(46, &priority), 0);
  EXPECT_EQ(priority, 5u);
  EXPECT_CALLS("rtk_qos_dscpPriRemap_set(unit=0, dscp=46, priority=5) = 0",
               "rtk_qos_dscpPriRemap_get(unit=0, dscp=46, priority=>5) = 0");
}

TEST_F(QosPriority, DscpMapSetPassesAnythingOn) {
  for (const int64_t result : kPassedOn) {
    chip_answers("rtk_qos_dscpPriRemap_set", result);
    swprobe::forget();
    EXPECT_EQ(user_qos_dscp_map_set(1000, 77), result);
    EXPECT_CALLS("rtk_qos_dscpPriRemap_set(unit=0, dscp=1000, priority=77) = " +
                 std::to_string(result) + " !");
  }
}

TEST_F(QosPriority, DscpMapGetStoresWhateverTheResult) {
  uint32_t priority = 99;
  EXPECT_EQ(user_qos_dscp_map_get(64, &priority), VCHIP_E_INDEX);
  EXPECT_EQ(priority, 0u);
  chip_answers("rtk_qos_dscpPriRemap_get", -3, {{"priority", 6}});
  EXPECT_EQ(user_qos_dscp_map_get(1, &priority), -3);
  EXPECT_EQ(priority, 6u);
  chip_answers("rtk_qos_dscpPriRemap_get", 8, {{"priority", 2}});
  EXPECT_EQ(user_qos_dscp_map_get(1, &priority), 8);
  EXPECT_EQ(priority, 2u);
}

TEST_F(QosPriority, PortPriorityIsWrittenTwice) {
  EXPECT_EQ(user_qos_port_cos_set(25, 6), 0);
  EXPECT_CALLS("rtk_qos_portOuterPri_set(unit=0, port=25, priority=6) = 0",
               "rtk_qos_portInnerPri_set(unit=0, port=25, priority=6) = 0");
  EXPECT_EQ(vchip::qos_port(0, 25).outer_priority, 6u);
  EXPECT_EQ(vchip::qos_port(0, 25).inner_priority, 6u);
  EXPECT_EQ(vchip::qos_port(1, 25).outer_priority, 0u);
  EXPECT_EQ(vchip::qos_port(0, 24).outer_priority, 0u);
}

TEST_F(QosPriority, PortPriorityStopsAfterANegativeOuterWrite) {
  chip_answers("rtk_qos_portOuterPri_set", -4);
  swprobe::forget();
  EXPECT_EQ(user_qos_port_cos_set(3, 1), -4);
  EXPECT_CALLS("rtk_qos_portOuterPri_set(unit=0, port=3, priority=1) = -4 !");
  chip_answers("rtk_qos_portOuterPri_set", 4);
  chip_answers("rtk_qos_portInnerPri_set", -9);
  EXPECT_EQ(user_qos_port_cos_set(3, 1), -9);
  chip_answers("rtk_qos_portInnerPri_set", 9);
  EXPECT_EQ(user_qos_port_cos_set(3, 1), 9);
}

TEST_F(QosPriority, PortPriorityIsReadFromTheOuterWord) {
  ASSERT_EQ(rtk_qos_portOuterPri_set(0, 7, 3), 0);
  ASSERT_EQ(rtk_qos_portInnerPri_set(0, 7, 5), 0);
  swprobe::forget();
  uint32_t priority = 99;
  EXPECT_EQ(user_qos_port_cos_get(7, &priority), 0);
  EXPECT_EQ(priority, 3u);
  EXPECT_CALLS("rtk_qos_portOuterPri_get(unit=0, port=7, priority=>3) = 0");
}

TEST_F(QosPriority, PortPriorityGetLeavesTheOutputToTheSdk) {
  uint32_t priority = 99;
  EXPECT_EQ(user_qos_port_cos_get(29, &priority), VCHIP_E_PORT);
  EXPECT_EQ(priority, 99u);
  for (const int64_t result : kPassedOn) {
    chip_answers("rtk_qos_portOuterPri_get", result, {{"priority", 41}});
    priority = 99;
    EXPECT_EQ(user_qos_port_cos_get(-1, &priority), result);
    EXPECT_EQ(priority, 41u);
  }
}

TEST_F(QosPriority, PrintsNothingOnFailure) {
  const auto all = [] {
    uint32_t value = 0;
    const uint8_t queues[8] = {255, 0, 0, 0, 0, 0, 0, 0};
    user_qos_pri_remap_set(2, 0, 0);
    user_qos_pri_queue_map_get(8, &value);
    user_qos_pri_queue_map_set(queues);
    user_qos_dscp_map_get(64, &value);
    user_qos_dscp_map_set(64, 0);
    user_qos_port_cos_get(-1, &value);
    user_qos_port_cos_set(-1, 0);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
