// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/frame.h>
#include <swctl/platform/sdk.h>
#include <swctl/stp.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;

constexpr uint32_t kStateUntouched = 99;
constexpr const char *kSet = "rtk_stp_mstpState_set";
constexpr const char *kGet = "rtk_stp_mstpState_get";

class StgState : public swctl_test::LibraryTest {
 protected:
  void SetUp() override {
    LibraryTest::SetUp();
    for (uint32_t unit = 0; unit < VCHIP_UNITS; ++unit)
      for (const uint32_t instance : {1u, 2u})
        ASSERT_EQ(rtk_stp_mstpInstance_create(unit, instance), 0);
    stateflag = 0;
    swprobe::forget();
  }
  void TearDown() override {
    stateflag = 0;
    LibraryTest::TearDown();
  }
};

uint32_t chip_state(uint32_t unit, uint32_t instance, size_t port) {
  return vchip::stp_instances(unit)[instance].states[port];
}

struct Translation {
  uint32_t generic;
  uint32_t chip;
  uint32_t flag;  // stateflag afterwards, 55 before
};
constexpr Translation kTranslations[] = {
    {USER_STP_DISABLED, 0, 55},
    {USER_STP_BLOCKING, 1, 55},
    {USER_STP_LISTENING, 2, 2},
    {USER_STP_LEARNING, 2, 3},
    {USER_STP_FORWARDING, 3, 55},
    {5, 0, 55},
    {7, 0, 55},
    {0x80000002, 0, 55},
    {UINT32_MAX, 0, 55},
};

TEST_F(StgState, SetTranslatesAndRemembers) {
  for (const Translation &test : kTranslations) {
    stateflag = 55;
    ASSERT_EQ(rtk_stp_mstpState_set(1, 2, 25, test.chip == 0 ? 3 : 0), 0);
    swprobe::forget();
    EXPECT_EQ(user_stg_stp_set(8, 1, 2, 25, test.generic), 0);
    EXPECT_CALLS("rtk_stp_mstpState_set(unit=1, instance=2, port=25, state=" +
                 std::to_string(test.chip) + ") = 0");
    EXPECT_EQ(chip_state(1, 2, 25), test.chip);
    EXPECT_EQ(stateflag, test.flag) << test.generic;
  }
  EXPECT_EQ(chip_state(0, 2, 25), 0u);
  EXPECT_EQ(chip_state(1, 1, 25), 0u);
}

TEST_F(StgState, SetRemembersEvenIfTheChipRefuses) {
  for (const uint32_t state : {USER_STP_LEARNING, USER_STP_LISTENING}) {
    stateflag = 0;
    EXPECT_EQ(user_stg_stp_set(0, 0, 9, 5, state), VCHIP_E_INSTANCE);
    EXPECT_EQ(stateflag, state);
  }
  stateflag = 0;
  EXPECT_EQ(user_stg_stp_set(0, 0, 9, 5, USER_STP_FORWARDING), VCHIP_E_INSTANCE);
  EXPECT_EQ(stateflag, 0u);
}

TEST_F(StgState, SetPassesAnyPortAndResult) {
  for (const int64_t result : {6, -1, INT32_MIN}) {
    chip_answers(kSet, result);
    swprobe::forget();
    EXPECT_EQ(user_stg_stp_set(0, 7, 0x80000000, -4, USER_STP_BLOCKING), result);
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].in("unit"), 7);
    EXPECT_EQ(calls[0].in("instance"), 0x80000000);
    EXPECT_EQ(calls[0].in("port"), -4);
  }
}

TEST_F(StgState, GetTranslatesBack) {
  constexpr uint32_t kGeneric[] = {USER_STP_DISABLED, USER_STP_BLOCKING, USER_STP_LISTENING,
                                   USER_STP_FORWARDING};
  for (uint32_t chip = 0; chip < 4; ++chip) {
    ASSERT_EQ(rtk_stp_mstpState_set(1, 1, 26, chip), 0);
    uint32_t state = kStateUntouched;
    swprobe::forget();
    EXPECT_EQ(user_stg_stp_get(3, 1, 1, 26, &state), 0);
    EXPECT_EQ(state, kGeneric[chip]);
    EXPECT_CALLS("rtk_stp_mstpState_get(unit=1, instance=1, port=26, state=>" +
                 std::to_string(chip) + ") = 0");
  }
}

TEST_F(StgState, LearningReadsAsTheSharedWordSays) {
  ASSERT_EQ(rtk_stp_mstpState_set(0, 1, 5, 2), 0);
  for (const uint32_t flag : {2u, 3u, 4u, UINT32_MAX}) {
    stateflag = flag;
    uint32_t state = kStateUntouched;
    EXPECT_EQ(user_stg_stp_get(0, 0, 1, 5, &state), 0);
    EXPECT_EQ(state, flag);
    EXPECT_EQ(stateflag, flag);
  }
}

TEST_F(StgState, TheLastRequestSpeaksForAllPortsAndInstances) {
  ASSERT_EQ(user_stg_stp_set(0, 0, 1, 5, USER_STP_LEARNING), 0);
  uint32_t state = kStateUntouched;
  ASSERT_EQ(user_stg_stp_get(0, 0, 1, 5, &state), 0);
  EXPECT_EQ(state, USER_STP_LEARNING);
  ASSERT_EQ(user_stg_stp_set(0, 0, 2, 7, USER_STP_LISTENING), 0);
  ASSERT_EQ(user_stg_stp_get(0, 0, 1, 5, &state), 0);
  EXPECT_EQ(state, USER_STP_LISTENING);
  // A state that both models have does not speak for learning ports.
  ASSERT_EQ(user_stg_stp_set(0, 0, 2, 8, USER_STP_FORWARDING), 0);
  ASSERT_EQ(user_stg_stp_get(0, 0, 1, 5, &state), 0);
  EXPECT_EQ(state, USER_STP_LISTENING);
}

TEST_F(StgState, GetWritesWhateverTheResult) {
  uint32_t state = kStateUntouched;
  EXPECT_EQ(user_stg_stp_get(0, 0, 9, 5, &state), VCHIP_E_INSTANCE);
  EXPECT_EQ(state, USER_STP_DISABLED);
  chip_answers(kGet, -5, {{"state", 3}});
  EXPECT_EQ(user_stg_stp_get(0, 0, 1, 5, &state), -5);
  EXPECT_EQ(state, USER_STP_FORWARDING);
  chip_answers(kGet, 5, {{"state", 1}});
  EXPECT_EQ(user_stg_stp_get(0, 0, 1, 5, &state), 5);
  EXPECT_EQ(state, USER_STP_BLOCKING);
}

TEST_F(StgState, GetWritesNothingForUnknownCodes) {
  for (const uint32_t code : {4u, 0x80000002u, UINT32_MAX}) {
    chip_answers(kGet, 0, {{"state", code}});
    uint32_t state = kStateUntouched;
    EXPECT_EQ(user_stg_stp_get(0, 0, 1, 5, &state), 0);
    EXPECT_EQ(state, kStateUntouched);
  }
}

TEST_F(StgState, PrintsNothing) {
  const auto all = [] {
    uint32_t state = 0;
    user_stg_stp_set(0, 2, 0, 0, 7);
    user_stg_stp_get(0, 2, 0, 0, &state);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
