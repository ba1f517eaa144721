// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/qos.h>

#include "support/front_ports.h"
#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using testing::Each;
using testing::ElementsAre;

constexpr uint32_t kUntouched = 99;
constexpr const char *kStrict = "rtk_qos_queueStrictEnable_get";
constexpr const char *kAlgorithm = "rtk_qos_schedulingAlgorithm_get";
constexpr const char *kTable = "rtk_qos_schedulingQueue_get";

class QosScheduleGet : public swctl_test::LibraryTest {
 protected:
  void get() {
    std::fill(std::begin(weights_), std::end(weights_), kUntouched);
    mode_ = kUntouched;
    swprobe::forget();
    EXPECT_EQ(user_qos_schedule_get(&mode_, weights_), 0);
  }
  // The chip's own state of the port of interface 1.
  void chip_has(uint32_t strict_queues, uint32_t algorithm, const uint32_t (&weights)[8]) {
    for (uint32_t queue = 0; queue < 8; ++queue)
      ASSERT_EQ(rtk_qos_queueStrictEnable_set(0, 0, queue, queue < strict_queues), 0);
    ASSERT_EQ(rtk_qos_schedulingAlgorithm_set(0, 0, algorithm), 0);
    ASSERT_EQ(rtk_qos_schedulingQueue_set(0, 0, weights), 0);
  }

  uint32_t mode_ = 0;
  uint32_t weights_[8] = {};
};

constexpr uint32_t kOnes[8] = {1, 1, 1, 1, 1, 1, 1, 1};
constexpr uint32_t kMixed[8] = {0, 0, 1, 1, 2, 2, 4, 8};

TEST_F(QosScheduleGet, AllStrictIsModeOneAndLeavesTheWeights) {
  chip_has(8, 0, kMixed);
  get();
  EXPECT_EQ(mode_, USER_QOS_SCHEDULE_STRICT);
  EXPECT_THAT(weights_, Each(kUntouched));
  const swctl_test::Asked asked = swctl_test::take_asked();
  ASSERT_EQ(asked.sdk.size(), 8u);
  for (size_t queue = 0; queue < 8; ++queue)
    EXPECT_EQ(asked.sdk[queue], "rtk_qos_queueStrictEnable_get(unit=0, port=0, queue=" +
                                    std::to_string(queue) + ", enable=>1) = 0");
  EXPECT_THAT(asked.interfaces, Each(1));
}

TEST_F(QosScheduleGet, StopsAskingAtTheFirstQueueThatIsNotStrict) {
  chip_has(2, 1, kMixed);
  get();
  const swctl_test::Asked asked = swctl_test::take_asked();
  EXPECT_THAT(asked.sdk,
              ElementsAre("rtk_qos_queueStrictEnable_get(unit=0, port=0, queue=0, enable=>1) = 0",
                          "rtk_qos_queueStrictEnable_get(unit=0, port=0, queue=1, enable=>1) = 0",
                          "rtk_qos_queueStrictEnable_get(unit=0, port=0, queue=2, enable=>0) = 0",
                          "rtk_qos_schedulingQueue_get(unit=0, port=0, "
                          "weights=>[0 0 1 1 2 2 4 8]) = 0",
                          "rtk_qos_schedulingAlgorithm_get(unit=0, port=0, algorithm=>1) = 0"));
  EXPECT_EQ(mode_, USER_QOS_SCHEDULE_WEIGHTED);
  EXPECT_THAT(weights_, ElementsAre(0, 0, 1, 1, 2, 2, 4, 8));
}

TEST_F(QosScheduleGet, AlgorithmAndWeightsDecideTheMode) {
  chip_has(0, 0, kOnes);
  get();
  EXPECT_EQ(mode_, USER_QOS_SCHEDULE_WEIGHTED_0);
  EXPECT_THAT(weights_, Each(1u));
  chip_has(7, 1, kOnes);
  get();
  EXPECT_EQ(mode_, USER_QOS_SCHEDULE_EQUAL);
  EXPECT_THAT(weights_, Each(1u));
}

TEST_F(QosScheduleGet, OneOtherWeightIsEnough) {
  for (uint32_t queue = 0; queue < 8; ++queue) {
    uint32_t weights[8] = {1, 1, 1, 1, 1, 1, 1, 1};
    weights[queue] = 0;
    chip_has(0, 1, weights);
    get();
    EXPECT_EQ(mode_, USER_QOS_SCHEDULE_WEIGHTED) << queue;
    weights[queue] = 2;
    chip_has(0, 1, weights);
    get();
    EXPECT_EQ(mode_, USER_QOS_SCHEDULE_WEIGHTED) << queue;
  }
}

TEST_F(QosScheduleGet, OtherAlgorithmsLeaveModeTwo) {
  chip_has(0, 1, kMixed);
  for (const uint32_t algorithm : {2u, UINT32_MAX}) {
    chip_answers(kAlgorithm, 0, {{"algorithm", algorithm}});
    get();
    EXPECT_EQ(mode_, USER_QOS_SCHEDULE_EQUAL);
    EXPECT_THAT(weights_, ElementsAre(0, 0, 1, 1, 2, 2, 4, 8));
  }
}

TEST_F(QosScheduleGet, AnyEnableButZeroIsStrict) {
  chip_answers(kStrict, 0, {{"enable", 0x80000000}});
  get();
  EXPECT_EQ(mode_, USER_QOS_SCHEDULE_STRICT);
}

TEST_F(QosScheduleGet, LooksAtNoResult) {
  chip_has(0, 1, kMixed);
  chip_answers(kStrict, -1, {{"enable", 1}});
  get();
  EXPECT_EQ(mode_, USER_QOS_SCHEDULE_STRICT);
  swprobe::clear_plan();
  chip_answers(kAlgorithm, -2, {{"algorithm", 0}});
  chip_answers(kTable, -3, {{"weights[0]", 7}, {"weights[7]", 9}});
  get();
  EXPECT_EQ(mode_, USER_QOS_SCHEDULE_WEIGHTED_0);
  EXPECT_THAT(weights_, ElementsAre(7, 0, 0, 0, 0, 0, 0, 9));
}

TEST_F(QosScheduleGet, CallsThatWriteNothingCountAsZero) {
  for (const char *name : {kStrict, kAlgorithm, kTable}) chip_answers(name, -5);
  get();
  EXPECT_EQ(mode_, USER_QOS_SCHEDULE_WEIGHTED_0);
  EXPECT_THAT(weights_, Each(0u));
}

TEST_F(QosScheduleGet, ReadsBackWhatWasSet) {
  const uint32_t modes[] = {1, 2, 3, 4};
  for (const uint32_t mode : modes) {
    ASSERT_EQ(user_qos_schedule_set(mode, kMixed), 0);
    get();
    EXPECT_EQ(mode_, mode);
  }
}

TEST_F(QosScheduleGet, PrintsNothing) {
  for (const char *name : {kStrict, kAlgorithm, kTable}) chip_answers(name, -5);
  EXPECT_PRINTED(swctl_test::printed_by([this] { get(); }), "", "");
}

}  // namespace
