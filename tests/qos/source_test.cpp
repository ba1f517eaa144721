// SPDX-License-Identifier: MIT
// Trust groups, remarking, and the queues to the processor.
#include <swctl-vchip/view.h>
#include <swctl/qos.h>

#include "support/front_ports.h"
#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using testing::ElementsAre;
using QosSource = swctl_test::LibraryTest;
using Words = std::vector<uint32_t>;

constexpr const char *kGroup = "rtk_qos_priSelGroup_set";

TEST_F(QosSource, GroupsHaveTheirWords) {
  EXPECT_EQ(user_qos_trust_sel_group_set(USER_QOS_TRUST_PORT), 0);
  EXPECT_EQ(user_qos_trust_sel_group_set(USER_QOS_TRUST_TAG), 0);
  EXPECT_EQ(user_qos_trust_sel_group_set(USER_QOS_TRUST_DSCP), 0);
  EXPECT_CALLS("rtk_qos_priSelGroup_set(unit=0, group=0, weights=[0 0 0 1 1]) = 0",
               "rtk_qos_priSelGroup_set(unit=0, group=1, weights=[0 2 2 1 1]) = 0",
               "rtk_qos_priSelGroup_set(unit=0, group=2, weights=[3 2 2 1 1]) = 0");
  EXPECT_THAT(vchip::qos(0).group_weights, ElementsAre(Words{0, 0, 0, 1, 1}, Words{0, 2, 2, 1, 1},
                                                       Words{3, 2, 2, 1, 1}, Words{0, 0, 0, 0, 0}));
  EXPECT_THAT(vchip::qos(1).group_weights[2], Words(5, 0));
}

TEST_F(QosSource, OtherGroupsAreRefusedWithoutACall) {
  for (const int32_t group : {-1, 3, 4, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(user_qos_trust_sel_group_set(group), -1);
  }
  EXPECT_NO_CALLS();
}

TEST_F(QosSource, GroupSetPassesTheResult) {
  for (const int64_t result : {3, -1, -5, INT32_MIN}) {
    chip_answers(kGroup, result);
    EXPECT_EQ(user_qos_trust_sel_group_set(1), result);
  }
}

TEST_F(QosSource, GroupInitProgramsThreeGroupsWhateverTheyAnswer) {
  for (const int64_t result : {0, -1, 7}) {
    chip_answers(kGroup, result);
    swprobe::forget();
    EXPECT_EQ(user_qos_trust_sel_group_init(), 0);
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 3u);
    for (size_t group = 0; group < 3; ++group)
      EXPECT_EQ(calls[group].in("group"), static_cast<int64_t>(group));
  }
}

TEST_F(QosSource, TrustModeIsThePortsGroup) {
  EXPECT_EQ(user_qos_port_trust_mode_set(25, 2), 0);
  EXPECT_CALLS("rtk_qos_portPriSelGroup_set(unit=0, port=25, group=2) = 0");
  EXPECT_EQ(vchip::qos_port(0, 25).group, 2u);
  EXPECT_EQ(vchip::qos_port(1, 25).group, 3u);
  for (const int64_t result : {4, -1, INT32_MIN}) {
    chip_answers("rtk_qos_portPriSelGroup_set", result);
    swprobe::forget();
    EXPECT_EQ(user_qos_port_trust_mode_set(-3, 0x80000000), result);
    EXPECT_EQ(swprobe::take()[0].in("group"), 0x80000000);
  }
}

TEST_F(QosSource, RemarkingIsSwitchedOnForEveryFrontPort) {
  EXPECT_EQ(user_qos_remark_inner_tag_src_init(), 0);
  std::vector<std::string> expected = {"rtk_qos_1pRemarkSrcSel_set(unit=0, source=0) = 0"};
  for (const int32_t port : swctl_test::front_ports())
    expected.push_back("rtk_qos_1pRemarkEnable_set(unit=0, port=" + std::to_string(port) +
                       ", enable=1) = 0");
  const swctl_test::Asked asked = swctl_test::take_asked();
  EXPECT_EQ(asked.sdk, expected);
  EXPECT_EQ(asked.interfaces, swctl_test::front_interfaces());
  EXPECT_EQ(vchip::qos(0).remark_source, 0u);
  EXPECT_EQ(vchip::qos(1).remark_source, 1u);
  EXPECT_TRUE(vchip::qos_port(0, 26).remarks);
  for (const int32_t port : {25, 27, 28}) EXPECT_FALSE(vchip::qos_port(0, port).remarks);
  EXPECT_FALSE(vchip::qos_port(1, 26).remarks);
}

TEST_F(QosSource, RemarkingLooksAtNoResult) {
  for (const int64_t result : {-1, 9}) {
    chip_answers("rtk_qos_1pRemarkSrcSel_set", result);
    chip_answers("rtk_qos_1pRemarkEnable_set", result);
    swprobe::forget();
    EXPECT_EQ(user_qos_remark_inner_tag_src_init(), 0);
    EXPECT_EQ(swctl_test::take_asked().sdk.size(), 27u);
  }
}

TEST_F(QosSource, CpuQueuesGetRisingWeights) {
  EXPECT_EQ(user_qos_cpu_weight_init(), 0);
  EXPECT_CALLS("adp_intf_2_phy_id(interface=0) = 28",
               "rtk_qos_schedulingQueue_set(unit=0, port=28, weights=[1 2 3 4 5 6 7 8]) = 0");
  EXPECT_EQ(vchip::qos_port(0, 28).weights, (Words{1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_NE(vchip::qos_port(1, 28).weights, (Words{1, 2, 3, 4, 5, 6, 7, 8}));
  for (const int64_t result : {2, -1, -9}) {
    chip_answers("rtk_qos_schedulingQueue_set", result);
    EXPECT_EQ(user_qos_cpu_weight_init(), result);
  }
}

TEST_F(QosSource, PrintsNothing) {
  const auto all = [] {
    for (const char *name : {kGroup, "rtk_qos_1pRemarkEnable_set", "rtk_qos_schedulingQueue_set"})
      chip_answers(name, -1);
    user_qos_trust_sel_group_set(9);
    user_qos_trust_sel_group_init();
    user_qos_remark_inner_tag_src_init();
    user_qos_cpu_weight_init();
    user_qos_port_trust_mode_set(-1, 0);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
