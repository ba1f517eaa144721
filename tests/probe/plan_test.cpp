// SPDX-License-Identifier: MIT
// Which calls a line of a fault plan answers.
#include "sample/sample_test.h"

namespace {

using swprobe::plan;
using testing::ElementsAre;

class PlanTest : public SampleTest {
 protected:
  static int32_t scalars(uint32_t unit, int32_t port, uint32_t mask = 0) {
    uint32_t value = 0;
    uint32_t bits = 0;
    return sample_scalars(unit, port, mask, &value, &bits);
  }
};

TEST_F(PlanTest, WithoutANumberEveryCallFails) {
  plan("sample_result result -2");
  EXPECT_THAT(results(3), ElementsAre(-2, -2, -2));
}

TEST_F(PlanTest, NthIsOneCall) {
  plan("sample_result nth 3 result -2");
  EXPECT_THAT(results(5), ElementsAre(0, 0, -2, 0, 0));
}

TEST_F(PlanTest, FromIsThatCallAndAllAfterIt) {
  plan("sample_result from 3 result -2");
  EXPECT_THAT(results(5), ElementsAre(0, 0, -2, -2, -2));
}

TEST_F(PlanTest, EveryIsOneInSoMany) {
  plan("sample_result every 2 result -2");
  EXPECT_THAT(results(5), ElementsAre(0, -2, 0, -2, 0));
}

TEST_F(PlanTest, ConditionsMustAllHold) {
  plan("sample_scalars unit 1 port 7 result -2");
  EXPECT_EQ(scalars(1, 7), -2);
  EXPECT_EQ(scalars(0, 7), 0);
  EXPECT_EQ(scalars(1, 6), 0);
}

TEST_F(PlanTest, OnlyCallsThatMeetTheConditionsCount) {
  plan("sample_scalars nth 2 port 7 result -2");
  EXPECT_EQ(scalars(0, 7), 0);
  EXPECT_EQ(scalars(0, 1), 0);
  EXPECT_EQ(scalars(0, 2), 0);
  EXPECT_EQ(scalars(0, 7), -2);
  EXPECT_EQ(scalars(0, 7), 0);
}

TEST_F(PlanTest, ValuesAreComparedInTheArgumentsWidth) {
  plan("sample_scalars port 0xffffffff result -2");
  plan("sample_scalars mask -1 result -3");
  EXPECT_EQ(scalars(0, -1), -2);
  EXPECT_EQ(scalars(0, 0, 0xffffffff), -3);
}

TEST_F(PlanTest, ElementsOfArraysAreCompared) {
  plan("sample_arrays list[2] 9 result -2");
  plan("sample_arrays mac 02:03 result -3");
  plan("sample_arrays mac[4] 05:06:07 result -4");
  const uint16_t list[] = {9, 0, 0};
  const uint16_t nines[] = {0, 0, 9};
  const uint8_t mac[] = {2, 4, 0, 0, 5, 6};
  const uint8_t other[] = {2, 3, 0, 0, 0, 0};
  EXPECT_EQ(sample_arrays(nines, mac, 0, nullptr), -2);
  EXPECT_EQ(sample_arrays(list, other, 0, nullptr), -3);
  // The last comparison would reach past the end.
  EXPECT_EQ(sample_arrays(list, mac, 0, nullptr), 0);
}

TEST_F(PlanTest, WildcardsReachSeveralCalls) {
  plan("sample_r?[s]* result -2");
  EXPECT_EQ(call(0), -2);
  sample_entry found{};
  EXPECT_EQ(sample_record(0, &kEntry, &found), 0);
}

TEST_F(PlanTest, AWildcardPassesOverCallsWithoutTheArgument) {
  plan("sample_* port 7 result -2");
  EXPECT_EQ(scalars(0, 7), -2);
  EXPECT_EQ(call(7), 7);
}

TEST_F(PlanTest, AllCallsOfAWildcardAreCountedTogether) {
  plan("sample_* nth 2 result -2");
  EXPECT_EQ(call(0), 0);
  EXPECT_EQ(scalars(0, 0), -2);
}

TEST_F(PlanTest, TheFirstRuleThatFitsWins) {
  plan("sample_result nth 1 result -2");
  plan("sample_result result -3");
  EXPECT_THAT(results(2), ElementsAre(-2, -3));
}

TEST_F(PlanTest, ARuleCountsTheCallsThatAnotherAnswers) {
  plan("sample_result nth 1 result -2");
  plan("sample_result nth 2 result -3");
  EXPECT_THAT(results(3), ElementsAre(-2, -3, 0));
  EXPECT_EQ(swprobe::made_up_count(), 2u);
}

TEST_F(PlanTest, ThePlatformIsNotCalled) {
  plan("sample_result result -2");
  uint32_t written = 50;
  EXPECT_EQ(sample_result(0, &written), -2);
  EXPECT_EQ(written, 50u);
}

TEST_F(PlanTest, OutputsAreWrittenAsNamed) {
  plan("sample_scalars result 1 out value 0x10 out bits 3");
  uint32_t value = 0;
  uint32_t bits = 0;
  EXPECT_EQ(sample_scalars(0, 0, 0, &value, &bits), 1);
  EXPECT_EQ(value, 16u);
  EXPECT_EQ(bits, 3u);
  EXPECT_EQ(swprobe::take_lines(), Lines{"sample_scalars(unit=0, port=0, mask=0x0, value=>16, "
                                         "bits=>0x3) = 1 !"});
}

TEST_F(PlanTest, AnOutputOfOneCallMayBeAnInputOfAnother) {
  plan("sample_* result 0 out mask 5");
  EXPECT_EQ(scalars(0, 0, 1), 0);
  uint32_t mask = 1;
  int8_t steps[2] = {};
  EXPECT_EQ(sample_update(&mask, steps), 0);
  EXPECT_EQ(mask, 5u);
  EXPECT_EQ(swprobe::take_lines(), (Lines{"sample_scalars(unit=0, port=0, mask=0x1) = 0 !",
                                          "sample_update(mask=0x1=>0x5, steps=[0 0]) = 0 !"}));
}

TEST_F(PlanTest, ArgumentsMayBeNamedLikeWordsOfThePlan) {
  plan("sample_words every 1 from 3 result -2 out result 8");
  uint32_t result = 0;
  EXPECT_EQ(sample_words(3, &result), -2);
  EXPECT_EQ(result, 8u);
  EXPECT_EQ(sample_words(4, &result), 0);
}

TEST_F(PlanTest, NullMatchesNoValue) {
  plan("sample_update mask 0 result -2");
  swprobe::answer("sample_update", 2, {-3, {}});
  uint32_t mask = 0;
  int8_t steps[2] = {};
  EXPECT_EQ(sample_update(&mask, steps), -2);
  EXPECT_EQ(sample_update(nullptr, steps), -3);
}

TEST_F(PlanTest, ACallThatNobodyHasCanBeAnswered) {
  plan("sample_absent result 0 out value 12");
  testing::internal::CaptureStderr();
  uint32_t value = 0;
  EXPECT_EQ(sample_absent(0, &value), 0);
  EXPECT_EQ(value, 12u);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
