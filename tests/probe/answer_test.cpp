// SPDX-License-Identifier: MIT
// Scripted answers of a test program.
#include <stdexcept>

#include "sample/sample_test.h"

namespace {

using swprobe::answer;
using swprobe::take_lines;
using testing::ElementsAre;

class AnswerTest : public SampleTest {
 protected:
  static std::string error_of(const std::string &name, const swprobe::Answer &scripted) {
    try {
      answer(name, 0, scripted);
    } catch (const std::invalid_argument &error) {
      return error.what();
    }
    return "no error";
  }
};

TEST_F(AnswerTest, StandsForTheNthCallFromNowOn) {
  results(3);
  answer("sample_result", 2, {-5, {}});
  EXPECT_THAT(results(3), ElementsAre(0, -5, 0));
  EXPECT_EQ(swprobe::made_up_count(), 1u);
}

TEST_F(AnswerTest, NumberZeroStandsForEveryCall) {
  answer("sample_result", 0, {6, {}});
  EXPECT_THAT(results(3), ElementsAre(6, 6, 6));
  EXPECT_EQ(swprobe::made_up_count(), 3u);
}

TEST_F(AnswerTest, WritesTheNamedOutputsAndNoOthers) {
  uint32_t value = 1;
  uint32_t bits = 2;
  answer("sample_scalars", 0, {0, {{"bits", 0xf2000000}}});
  EXPECT_EQ(sample_scalars(0, 3, 0, &value, &bits), 0);
  EXPECT_EQ(value, 1u);
  EXPECT_EQ(bits, 0xf2000000u);
  EXPECT_THAT(take_lines(),
              ElementsAre("sample_scalars(unit=0, port=3, mask=0x0, bits=>0xf2000000) = 0 !"));
}

TEST_F(AnswerTest, WritesOutputsOfAFailureTooButDoesNotShowThem) {
  uint32_t written = 1;
  answer("sample_result", 0, {-3, {{"written", 9}}});
  EXPECT_EQ(sample_result(0, &written), -3);
  EXPECT_EQ(written, 9u);
  EXPECT_THAT(take_lines(), ElementsAre("sample_result(value=0) = -3 !"));
}

TEST_F(AnswerTest, WritesElementsOfArrays) {
  const uint16_t list[3] = {};
  const uint8_t mac[6] = {};
  int32_t found[3] = {1, 2, 3};
  answer("sample_arrays", 1, {0, {{"found[2]", -1}, {"found", 8}}});
  EXPECT_EQ(sample_arrays(list, mac, 3, found), 0);
  EXPECT_THAT(found, ElementsAre(8, 2, -1));
  EXPECT_THAT(take_lines(), ElementsAre(testing::HasSubstr("found=>[8 2 -1]) = 0 !")));
}

TEST_F(AnswerTest, WritesNothingPastTheEndNorToNull) {
  const uint16_t list[3] = {};
  const uint8_t mac[6] = {};
  int32_t found[3] = {1, 2, 3};
  answer("sample_arrays", 0, {0, {{"found[2]", -1}}});
  EXPECT_EQ(sample_arrays(list, mac, 2, found), 0);
  EXPECT_THAT(found, ElementsAre(1, 2, 3));
  EXPECT_EQ(sample_arrays(list, mac, 3, nullptr), 0);
  EXPECT_THAT(take_lines(), ElementsAre(testing::HasSubstr("count=2) = 0 !"),
                                        testing::HasSubstr("count=3, found=null) = 0 !")));
}

TEST_F(AnswerTest, KeepsEveryWidth) {
  uint64_t counter = 0;
  answer("sample_widths", 0, {0, {{"counter", -2}}});
  EXPECT_EQ(sample_widths(0, 0, 0, 0, &counter), 0);
  EXPECT_EQ(counter, 0xfffffffffffffffeu);
  uint32_t mask = 0;
  int8_t steps[2] = {1, 2};
  answer("sample_update", 0, {0, {{"steps[1]", -128}, {"mask", 0xffffffff}}});
  EXPECT_EQ(sample_update(&mask, steps), 0);
  EXPECT_EQ(steps[0], 1);
  EXPECT_EQ(steps[1], -128);
  EXPECT_EQ(mask, 0xffffffffu);
}

TEST_F(AnswerTest, TheNewerGoesFirst) {
  answer("sample_result", 0, {1, {}});
  answer("sample_result", 0, {2, {}});
  EXPECT_EQ(call(0), 2);
}

TEST_F(AnswerTest, ACertainCallGoesBeforeEveryCall) {
  answer("sample_result", 2, {1, {}});
  answer("sample_result", 0, {2, {}});
  EXPECT_THAT(results(3), ElementsAre(2, 1, 2));
}

TEST_F(AnswerTest, GoesBeforeThePlan) {
  swprobe::plan("sample_result result -1");
  answer("sample_result", 1, {5, {}});
  EXPECT_THAT(results(2), ElementsAre(5, -1));
}

TEST_F(AnswerTest, IsForgottenWithThePlan) {
  answer("sample_result", 0, {5, {}});
  call(0);
  swprobe::clear_plan();
  EXPECT_EQ(swprobe::made_up_count(), 0u);
  EXPECT_EQ(call(0), 0);
}

TEST_F(AnswerTest, NamesWhatIsNotKnown) {
  EXPECT_EQ(error_of("sample_*", {}), "no call is named 'sample_*'");
  EXPECT_EQ(error_of("sample_scalars", {0, {{"values", 1}}}),
            "sample_scalars has no output 'values'");
  EXPECT_EQ(error_of("sample_scalars", {0, {{"port", 1}}}), "sample_scalars has no output 'port'");
  EXPECT_EQ(error_of("sample_update", {0, {{"steps[x]", 1}}}),
            "the index of 'steps[x]' is not a number");
  EXPECT_EQ(error_of("sample_update", {0, {{"steps", 300}}}), "the value of 'steps' is too large");
  EXPECT_EQ(error_of("sample_result", {int64_t{1} << 33, {}}),
            "the result does not fit into 32 bits");
  EXPECT_EQ(call(0), 0);
}

}  // namespace
