// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/qos.h>

#include <string>

#include "support/front_ports.h"
#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using swctl_test::front_ports;
using QosScheduleSet = swctl_test::LibraryTest;
using Words = std::vector<uint32_t>;

constexpr const char *kSetStrict = "rtk_qos_queueStrictEnable_set";
constexpr const char *kSetAlgorithm = "rtk_qos_schedulingAlgorithm_set";
constexpr const char *kSetTable = "rtk_qos_schedulingQueue_set";
constexpr size_t kCallsPerPort = 10;
constexpr uint32_t kSetMixed[] = {0, 0, 1, 1, 2, 2, 4, 8};

std::string table_text(const Words &words) {
  std::string text = "[";
  for (const uint32_t word : words) text += (text.size() == 1 ? "" : " ") + std::to_string(word);
  return text + "]";
}

// What one port gets.
std::vector<std::string> port_calls(int32_t port, const Words &strict, uint32_t algorithm,
                                    const Words &weights) {
  const std::string where = "(unit=0, port=" + std::to_string(port) + ", ";
  std::vector<std::string> lines;
  for (size_t queue = 0; queue < 8; ++queue)
    lines.push_back(kSetStrict + where + "queue=" + std::to_string(queue) +
                    ", enable=" + std::to_string(strict[queue]) + ") = 0");
  lines.push_back(kSetAlgorithm + where + "algorithm=" + std::to_string(algorithm) + ") = 0");
  lines.push_back(kSetTable + where + "weights=" + table_text(weights) + ") = 0");
  return lines;
}

struct Case {
  uint32_t mode;
  const uint32_t *weights;
  Words strict;
  uint32_t algorithm;
  Words table;
};
const Case kCases[] = {
    {1, nullptr, {1, 1, 1, 1, 1, 1, 1, 1}, 1, {0, 0, 0, 0, 0, 0, 0, 0}},
    {2, nullptr, {0, 0, 0, 0, 0, 0, 0, 0}, 1, {1, 1, 1, 1, 1, 1, 1, 1}},
    {3, kSetMixed, {1, 1, 0, 0, 0, 0, 0, 0}, 1, {0, 0, 1, 1, 2, 2, 4, 8}},
    {4, kSetMixed, {1, 1, 0, 0, 0, 0, 0, 0}, 0, {0, 0, 1, 1, 2, 2, 4, 8}},
};

TEST_F(QosScheduleSet, MakesTheSameCallsForEveryFrontPort) {
  for (const Case &test : kCases) {
    swprobe::forget();
    EXPECT_EQ(user_qos_schedule_set(test.mode, test.weights), 0);
    std::vector<std::string> expected;
    for (const int32_t port : front_ports())
      for (const std::string &line : port_calls(port, test.strict, test.algorithm, test.table))
        expected.push_back(line);
    EXPECT_EQ(swctl_test::take_asked().sdk, expected) << test.mode;
  }
}

TEST_F(QosScheduleSet, TranslatesTheInterfaceAnewForEveryCall) {
  EXPECT_EQ(user_qos_schedule_set(3, kSetMixed), 0);
  std::vector<int64_t> expected;
  for (const int64_t interface : swctl_test::front_interfaces())
    expected.insert(expected.end(), kCallsPerPort, interface);
  EXPECT_EQ(swctl_test::take_asked().interfaces, expected);
}

TEST_F(QosScheduleSet, UsesTheAdaptersAnswerAsItComes) {
  chip_answers("adp_intf_2_phy_id", -1);
  EXPECT_EQ(user_qos_schedule_set(1, nullptr), VCHIP_E_PORT);
  EXPECT_EQ(swctl_test::take_asked().sdk,
            (swctl_test::Lines{"rtk_qos_queueStrictEnable_set(unit=0, port=-1, queue=0, "
                               "enable=1) = -1002"}));
}

TEST_F(QosScheduleSet, ReachesTheFrontPortsOfUnitZeroAlone) {
  const vchip::QosPortView untouched = vchip::qos_port(1, 0);
  for (const Case &test : kCases) {
    EXPECT_EQ(user_qos_schedule_set(test.mode, test.weights), 0);
    for (const int32_t port : front_ports()) {
      const vchip::QosPortView view = vchip::qos_port(0, port);
      EXPECT_EQ(view.strict, test.strict) << port;
      EXPECT_EQ(view.algorithm, test.algorithm) << port;
      EXPECT_EQ(view.weights, test.table) << port;
    }
    for (const int32_t port : {25, 27, 28}) EXPECT_EQ(vchip::qos_port(0, port), untouched);
    EXPECT_EQ(vchip::qos_port(1, 0), untouched);
  }
}

TEST_F(QosScheduleSet, RefusesOtherModesWithoutACall) {
  for (const uint32_t mode : {0u, 5u, 6u, 0x80000001u, UINT32_MAX}) {
    EXPECT_EQ(user_qos_schedule_set(mode, kSetMixed), -1);
  }
  EXPECT_NO_CALLS();
}

TEST_F(QosScheduleSet, StopsAtANegativeStrictEnable) {
  for (const uint64_t nth : {1, 5, 8, 9, 208}) {
    swprobe::clear_plan();
    swprobe::answer(kSetStrict, nth, {-7, {}});
    swprobe::forget();
    EXPECT_EQ(user_qos_schedule_set(1, nullptr), -7);
    // Two more calls for each port that was finished.
    EXPECT_EQ(swctl_test::take_asked().sdk.size(), nth + (nth - 1) / 8 * 2);
  }
}

TEST_F(QosScheduleSet, KeepsWhatWasWrittenBeforeAFailure) {
  swprobe::answer(kSetStrict, 9, {-7, {}});
  EXPECT_EQ(user_qos_schedule_set(1, nullptr), -7);
  EXPECT_EQ(vchip::qos_port(0, 0).strict, Words(8, 1));
  EXPECT_EQ(vchip::qos_port(0, 1).strict, Words(8, 0));
}

TEST_F(QosScheduleSet, StopsAtANegativeTableWrite) {
  for (const uint64_t nth : {1, 2, 26}) {
    swprobe::clear_plan();
    swprobe::answer(kSetTable, nth, {-8, {}});
    swprobe::forget();
    EXPECT_EQ(user_qos_schedule_set(2, nullptr), -8);
    EXPECT_EQ(swctl_test::take_asked().sdk.size(), nth * kCallsPerPort);
  }
}

TEST_F(QosScheduleSet, GoesOnWhateverTheAlgorithmWriteAnswers) {
  chip_answers(kSetAlgorithm, -9);
  swprobe::forget();
  EXPECT_EQ(user_qos_schedule_set(2, nullptr), 0);
  EXPECT_EQ(swctl_test::take_asked().sdk.size(), 26 * kCallsPerPort);
}

TEST_F(QosScheduleSet, AnswersTheLastTableWrite) {
  chip_answers(kSetStrict, 3);
  chip_answers(kSetTable, 5);
  swprobe::answer(kSetTable, 26, {6, {}});
  swprobe::forget();
  EXPECT_EQ(user_qos_schedule_set(2, nullptr), 6);
  EXPECT_EQ(swctl_test::take_asked().sdk.size(), 26 * kCallsPerPort);
  swprobe::clear_plan();
  swprobe::answer(kSetTable, 25, {6, {}});
  EXPECT_EQ(user_qos_schedule_set(2, nullptr), 0);
}

TEST_F(QosScheduleSet, TakesAnyWeight) {
  const uint32_t weights[] = {0x80000000, 127, 128, UINT32_MAX, 1, 0, 1, 1};
  chip_answers(kSetTable, 0);
  swprobe::forget();
  EXPECT_EQ(user_qos_schedule_set(4, weights), 0);
  const auto calls = swprobe::take();
  const swprobe::Call &first = calls[19];
  ASSERT_EQ(first.name, kSetTable);
  for (size_t queue = 0; queue < 8; ++queue)
    EXPECT_EQ(first.in("weights[" + std::to_string(queue) + "]"), weights[queue]);
  EXPECT_EQ(vchip::qos_port(0, 0).strict, (Words{0, 0, 0, 0, 0, 1, 0, 0}));
}

TEST_F(QosScheduleSet, PrintsNothing) {
  const auto all = [] {
    user_qos_schedule_set(0, nullptr);
    user_qos_schedule_set(2, nullptr);
    chip_answers(kSetTable, -1);
    user_qos_schedule_set(2, nullptr);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
