// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/mirror_trunk.h>
#include <swctl/platform/sdk.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using Words = std::vector<uint32_t>;
using Mirror = swctl_test::LibraryTest;

constexpr const char *kGet = "rtk_mirror_group_get";
constexpr const char *kSet = "rtk_mirror_group_set";
constexpr uint32_t kGroup = 2;

// A group in which every field has a value of its own.
constexpr chip_mirror_entry kFull = {0,   17,  0x10, 0x20, 105, 106, 0, 108,
                                     109, 110, 111,  0,    113, 114, 0};

Words words(uint32_t unit = 0, uint32_t group = kGroup) {
  return vchip::mirror_groups(unit)[group];
}

void expect_get_and_set(const std::string &words) {
  const auto lines = swprobe::take_lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_THAT(lines[0], testing::StartsWith("rtk_mirror_group_get(unit=0, group=2, "));
  EXPECT_EQ(lines[1], "rtk_mirror_group_set(unit=0, group=2, " + words + ") = 0");
}

TEST_F(Mirror, PortOfAnEmptyGroup) {
  EXPECT_EQ(user_mirror_port_set(7, 1, 3, kGroup, 9, USER_MIRROR_INGRESS), 0);
  expect_get_and_set(
      "entry.enable=1, entry.mirroring_port=9, entry.ingress=0x8, entry.egress=0x0, "
      "entry.field5=0, "
      "entry.field6=0, entry.field7=1, entry.field8=0, entry.field9=0, entry.field10=0, "
      "entry.field11=0, entry.field12=0, entry.field13=0, entry.field14=0, entry.field15=0");
  EXPECT_EQ(words(), (Words{1, 9, 8, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(words(1), Words(15, 0)) << "the unit argument is not used";
  EXPECT_EQ(words(0, 1), Words(15, 0));
}

TEST_F(Mirror, FieldsThatAreNotSetStay) {
  ASSERT_EQ(rtk_mirror_group_set(0, kGroup, &kFull), 0);
  EXPECT_EQ(user_mirror_port_set(0, 0, 0, kGroup, 5, USER_MIRROR_BOTH), 0);
  EXPECT_EQ(words(), (Words{1, 5, 0x11, 0x21, 105, 106, 1, 108, 109, 110, 111, 0, 113, 114, 0}));
  EXPECT_EQ(user_set_flow_mirror(0, 0, kGroup, 6), 0);
  EXPECT_EQ(words(), (Words{1, 6, 0x11, 0x21, 105, 106, 1, 108, 109, 110, 111, 0, 113, 114, 1}));
  EXPECT_EQ(user_set_mirror_disable(0, 0, kGroup), 0);
  EXPECT_EQ(words(), (Words{0, 0, 0x11, 0x21, 105, 106, 1, 108, 109, 110, 111, 0, 113, 114, 1}));
}

struct ModeCase {
  uint32_t mode;
  uint32_t ingress;
  uint32_t egress;
};
// Of port 5, in masks that hold 0x70 and 0xA0 before.
constexpr ModeCase kModes[] = {
    {USER_MIRROR_NONE, 0x50, 0x80},    {1, 0x50, 0x80},
    {USER_MIRROR_INGRESS, 0x70, 0xA0}, {3, 0x50, 0x80},
    {USER_MIRROR_EGRESS, 0x70, 0xA0},  {5, 0x50, 0x80},
    {USER_MIRROR_BOTH, 0x70, 0xA0},    {7, 0x50, 0x80},
    {0x80000002, 0x50, 0x80},          {UINT32_MAX, 0x50, 0x80},
};

TEST_F(Mirror, OtherModesTakeThePortOutAndKeepTheOthers) {
  for (const ModeCase &test : kModes) {
    chip_mirror_entry entry = {};
    entry.ingress = 0x70;
    entry.egress = 0xA0;
    ASSERT_EQ(rtk_mirror_group_set(0, kGroup, &entry), 0);
    EXPECT_EQ(user_mirror_port_set(0, 0, 5, kGroup, 9, test.mode), 0);
    EXPECT_EQ(words()[2], test.ingress) << test.mode;
    EXPECT_EQ(words()[3], test.egress) << test.mode;
    EXPECT_EQ(words()[0], 1u) << "the group stays enabled";
  }
}

TEST_F(Mirror, EachModeSetsItsOwnMask) {
  EXPECT_EQ(user_mirror_port_set(0, 0, 3, kGroup, 9, USER_MIRROR_INGRESS), 0);
  EXPECT_EQ(user_mirror_port_set(0, 0, 5, kGroup, 9, USER_MIRROR_EGRESS), 0);
  EXPECT_EQ(words()[2], 0x08u);
  EXPECT_EQ(words()[3], 0x20u);
  EXPECT_EQ(user_mirror_port_set(0, 0, 26, kGroup, 9, USER_MIRROR_BOTH), 0);
  EXPECT_EQ(words()[2], 0x04000008u);
  EXPECT_EQ(words()[3], 0x04000020u);
}

TEST_F(Mirror, Port28SetsFieldTwelveInEveryMode) {
  for (const ModeCase &test : kModes) {
    ASSERT_EQ(vchip_reset(), 0);
    EXPECT_EQ(user_mirror_port_set(0, 0, 28, kGroup, 9, test.mode), 0);
    EXPECT_EQ(words()[11], 1u) << test.mode;
  }
  EXPECT_EQ(user_mirror_port_set(0, 0, 27, 0, 9, USER_MIRROR_BOTH), 0);
  EXPECT_EQ(words(0, 0)[11], 0u);
}

TEST_F(Mirror, PortsUpTo31HaveTheirBit) {
  for (int32_t port = 0; port < 32; ++port) {
    chip_answers(kGet, 0);
    chip_answers(kSet, 0);
    swprobe::forget();
    EXPECT_EQ(user_mirror_port_set(0, 0, port, kGroup, 9, USER_MIRROR_BOTH), 0);
    const auto calls = swprobe::take();
    EXPECT_EQ(calls[1].in("entry.ingress"), int64_t{1} << port);
    EXPECT_EQ(calls[1].in("entry.egress"), int64_t{1} << port);
  }
}

TEST_F(Mirror, OtherPortsHaveTheBitOfTheirRemainder) {
  for (const int32_t port : {32, 35, 64, -1, INT32_MIN}) {
    chip_answers(kGet, 0);
    chip_answers(kSet, 0);
    swprobe::forget();
    EXPECT_EQ(user_mirror_port_set(0, 0, port, kGroup, 9, USER_MIRROR_INGRESS), 0);
    const int64_t bit = int64_t{1} << (static_cast<uint32_t>(port) % 32);
    EXPECT_EQ(swprobe::take()[1].in("entry.ingress"), bit) << port;
  }
}

TEST_F(Mirror, FieldsTwelveAndFifteenAreNotTakenBack) {
  EXPECT_EQ(user_mirror_port_set(0, 0, 28, kGroup, 9, USER_MIRROR_BOTH), 0);
  EXPECT_EQ(user_set_flow_mirror(0, 0, kGroup, 9), 0);
  EXPECT_EQ(user_mirror_port_set(0, 0, 28, kGroup, 9, USER_MIRROR_NONE), 0);
  EXPECT_EQ(user_set_mirror_disable(0, 0, kGroup), 0);
  EXPECT_EQ(words()[11], 1u);
  EXPECT_EQ(words()[14], 1u);
}

TEST_F(Mirror, FlowsNeedNoPort) {
  EXPECT_EQ(user_set_flow_mirror(7, 1, kGroup, 12), 0);
  EXPECT_EQ(words(), (Words{1, 12, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 1}));
  EXPECT_EQ(words(1), Words(15, 0));
}

TEST_F(Mirror, AGroupThatIsEnabledAgainMirrorsTheSamePorts) {
  ASSERT_EQ(user_mirror_port_set(0, 0, 3, kGroup, 9, USER_MIRROR_BOTH), 0);
  ASSERT_EQ(user_set_mirror_disable(7, 1, kGroup), 0);
  EXPECT_EQ(words(), (Words{0, 0, 8, 8, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0}));
  ASSERT_EQ(user_set_flow_mirror(0, 0, kGroup, 4), 0);
  EXPECT_EQ(words(), (Words{1, 4, 8, 8, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 1}));
}

TEST_F(Mirror, CheckedDisableWaitsForTheLastPort) {
  ASSERT_EQ(user_mirror_port_set(0, 0, 3, kGroup, 9, USER_MIRROR_INGRESS), 0);
  ASSERT_EQ(user_mirror_port_set(0, 0, 5, kGroup, 9, USER_MIRROR_EGRESS), 0);
  ASSERT_EQ(user_mirror_port_set(0, 0, 3, kGroup, 9, USER_MIRROR_NONE), 0);
  swprobe::forget();
  EXPECT_EQ(user_check_set_mirror_disable(7, 1, kGroup), 0);
  EXPECT_EQ(swprobe::take().size(), 1u) << "egress is left: a read and no write";
  EXPECT_EQ(words()[0], 1u);
  ASSERT_EQ(user_mirror_port_set(0, 0, 5, kGroup, 9, USER_MIRROR_NONE), 0);
  ASSERT_EQ(user_mirror_port_set(0, 0, 6, kGroup, 9, USER_MIRROR_INGRESS), 0);
  EXPECT_EQ(user_check_set_mirror_disable(7, 1, kGroup), 0);
  EXPECT_EQ(words()[0], 1u) << "ingress is left";
  ASSERT_EQ(user_mirror_port_set(0, 0, 6, kGroup, 9, USER_MIRROR_NONE), 0);
  swprobe::forget();
  EXPECT_EQ(user_check_set_mirror_disable(7, 1, kGroup), 0);
  EXPECT_EQ(swprobe::take().size(), 2u);
  EXPECT_EQ(words(), (Words{0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(Mirror, CheckedDisableAnswersZeroWithoutAWrite) {
  chip_answers(kGet, -5, {{"entry.ingress", 4}});
  chip_answers(kSet, -6);
  EXPECT_EQ(user_check_set_mirror_disable(0, 0, kGroup), 0);
}

struct Writer {
  const char *name;
  int32_t (*function)();
};
const Writer kWriters[] = {
    {"port", [] { return user_mirror_port_set(0, 0, 3, kGroup, 9, USER_MIRROR_BOTH); }},
    {"flow", [] { return user_set_flow_mirror(0, 0, kGroup, 9); }},
    {"disable", [] { return user_set_mirror_disable(0, 0, kGroup); }},
    {"check", [] { return user_check_set_mirror_disable(0, 0, kGroup); }},
};

TEST_F(Mirror, TheWriteIsWhatTheCallerSees) {
  for (const Writer &test : kWriters) {
    for (const int64_t result : {4, -1, INT32_MIN}) {
      swprobe::clear_plan();
      chip_answers(kSet, result);
      EXPECT_EQ(test.function(), result) << test.name;
      chip_answers(kGet, -9);
      EXPECT_EQ(test.function(), result) << test.name;
    }
  }
}

TEST_F(Mirror, AReadThatFailsIsUsedAsFarAsItGot) {
  for (const Writer &test : kWriters) {
    swprobe::clear_plan();
    chip_answers(kGet, -9, {{"entry.field5", 41}});
    chip_answers(kSet, 0);
    swprobe::forget();
    EXPECT_EQ(test.function(), 0) << test.name;
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[1].in("entry.field5"), 41);
    EXPECT_EQ(calls[1].in("entry.field14"), 0);
  }
}

TEST_F(Mirror, GroupAndMirroringPortAreNotChecked) {
  chip_answers(kGet, 0);
  chip_answers(kSet, 0);
  swprobe::forget();
  EXPECT_EQ(user_mirror_port_set(0, 0, 1, 0x80000000, UINT32_MAX, USER_MIRROR_BOTH), 0);
  const auto calls = swprobe::take();
  EXPECT_EQ(calls[0].in("group"), 0x80000000);
  EXPECT_EQ(calls[1].in("group"), 0x80000000);
  EXPECT_EQ(calls[1].in("entry.mirroring_port"), UINT32_MAX);
}

TEST_F(Mirror, PrintsNothing) {
  chip_answers(kGet, -1);
  chip_answers(kSet, -1);
  const auto all = [] {
    for (const Writer &test : kWriters) test.function();
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
