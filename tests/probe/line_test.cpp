// SPDX-License-Identifier: MIT
// How calls look as lines of text.
#include "line.h"

#include <cerrno>
#include <stdexcept>

#include "sample/sample_test.h"

namespace {

using swprobe::take_lines;
using testing::ElementsAre;

class LineTest : public SampleTest {};

TEST_F(LineTest, ScalarsAreDecimalUnlessTheListSaysHex) {
  uint32_t value = 0;
  uint32_t bits = 0;
  EXPECT_EQ(sample_scalars(1, -3, 0xf0000001u, &value, &bits), 0);
  EXPECT_EQ(bits, 0x0ffffffeu);
  EXPECT_THAT(take_lines(), ElementsAre("sample_scalars(unit=1, port=-3, mask=0xf0000001, "
                                        "value=>4294967294, bits=>0xffffffe) = 0"));
}

TEST_F(LineTest, NullAddressesAreShownAsNull) {
  EXPECT_EQ(sample_scalars(0, 2, 0, nullptr, nullptr), 0);
  EXPECT_THAT(take_lines(), ElementsAre("sample_scalars(unit=0, port=2, mask=0x0, value=null, "
                                        "bits=null) = 0"));
}

TEST_F(LineTest, ArraysStandInBracketsAndBytesHaveTwoDigits) {
  const uint16_t list[] = {1, 2, 65535};
  const uint8_t mac[] = {2, 0, 0, 0, 0, 0xab};
  int32_t found[2] = {};
  EXPECT_EQ(sample_arrays(list, mac, 2, found), 2);
  EXPECT_THAT(take_lines(), ElementsAre("sample_arrays(list=[1 2 65535], mac=[02 00 00 00 00 ab], "
                                        "count=2, found=>[1 -1]) = 2"));
}

TEST_F(LineTest, AnArrayOfOneKeepsItsBrackets) {
  const uint16_t list[3] = {};
  const uint8_t mac[6] = {9};
  int32_t found = 0;
  EXPECT_EQ(sample_arrays(list, mac, 1, &found), 1);
  EXPECT_THAT(take_lines(), ElementsAre(testing::HasSubstr("found=>[9])")));
}

TEST_F(LineTest, AnArrayWithoutElementsIsLeftOut) {
  const uint16_t list[3] = {};
  const uint8_t mac[6] = {};
  EXPECT_EQ(sample_arrays(list, mac, 0, nullptr), 0);
  int32_t found = 0;
  EXPECT_EQ(sample_arrays(list, mac, -5, &found), -5);
  EXPECT_THAT(take_lines(), ElementsAre(testing::HasSubstr("count=0, found=null) = 0"),
                                        testing::HasSubstr("count=-5) = -5")));
}

TEST_F(LineTest, UpdatesShowBothSides) {
  uint32_t mask = 1;
  int8_t steps[2] = {5, 0};
  EXPECT_EQ(sample_update(&mask, steps), 0);
  EXPECT_THAT(take_lines(), ElementsAre("sample_update(mask=0x1=>0x3, steps=[5 0]=>[5 -5]) = 0"));
}

TEST_F(LineTest, EveryWidthKeepsItsSign) {
  uint64_t counter = 0;
  EXPECT_EQ(sample_widths(-1, 255, -300, -(int64_t{5} << 32), &counter), -51);
  EXPECT_EQ(sample_widths(1, 255, -200, 0, &counter), 56);
  EXPECT_THAT(take_lines(),
              ElementsAre("sample_widths(tiny=-1, byte=255, half=-300, wide=-21474836480) = -51",
                          "sample_widths(tiny=1, byte=255, half=-200, wide=0, "
                          "counter=>0xfedcba9876543210) = 56"));
}

TEST_F(LineTest, OutputsOfAFailedCallAreLeftOut) {
  call(-1);
  call(1);
  EXPECT_THAT(take_lines(), ElementsAre("sample_result(value=-1) = -1",
                                        "sample_result(value=1, written=>4) = 1"));
}

TEST_F(LineTest, AnAreaOfBytesNeedsNoType) {
  const uint8_t data[] = {1, 0x7f, 0xff};
  EXPECT_EQ(sample_area(3, data), 383);
  EXPECT_THAT(take_lines(), ElementsAre("sample_area(size=3, data=[01 7f ff]) = 383"));
}

TEST_F(LineTest, MadeUpResultsAreMarked) {
  swprobe::plan("sample_result value 1 result -7");
  call(1);
  EXPECT_THAT(take_lines(), ElementsAre("sample_result(value=1) = -7 !"));
}

TEST_F(LineTest, ASingleByteIsANumber) {
  swprobe::Argument mode{
      "mode", swprobe::Direction::value, swprobe::Form::hex, 1, false, false, {-2}, {}, {}};
  swprobe::Call call{1, "rtk_example", {mode}, 0, true, false};
  EXPECT_EQ(call.line(), "rtk_example(mode=0xfe) = 0");
  call.arguments[0].array = true;
  EXPECT_EQ(call.line(), "rtk_example(mode=[fe]) = 0");
}

TEST_F(LineTest, TheSentenceFollowsTheResult) {
  swprobe::Call failed{};
  failed.name = "rtk_example";
  failed.has_result = true;
  failed.result = -4;
  EXPECT_EQ(swprobe::line_of(failed, "no entry"), "rtk_example() = -4 (no entry)");
  failed.made_up = true;
  EXPECT_EQ(swprobe::line_of(failed, "no entry"), "rtk_example() = -4 (no entry) !");
  EXPECT_EQ(failed.line(), "rtk_example() = -4 !");
}

TEST_F(LineTest, TextsAreQuotedAndFunctionsWithoutResultEndAfterTheParenthesis) {
  swprobe::Argument text{"text", swprobe::Direction::ref, swprobe::Form::text, 1, false, false, {},
                         {},     "a \"b\" \\ c\n\t\x7f"};
  const swprobe::Call log{1, "Log", {text}, 0, false, false};
  EXPECT_EQ(log.line(), R"(Log(text="a \"b\" \\ c\n\x09\x7f"))");
}

TEST_F(LineTest, ValuesAreFoundByName) {
  uint32_t mask = 4;
  int8_t steps[2] = {5, 0};
  ASSERT_EQ(sample_update(&mask, steps), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].in("mask"), 4);
  EXPECT_EQ(calls[0].out("mask"), 6);
  EXPECT_EQ(calls[0].in("steps"), 5);
  EXPECT_EQ(calls[0].out("steps[1]"), -5);
  EXPECT_THROW(calls[0].out("steps[2]"), std::out_of_range);
  EXPECT_THROW(calls[0].in("stepz"), std::out_of_range);
}

TEST_F(LineTest, AValueThatIsNotThereIsNotInvented) {
  call(-1);
  sample_scalars(0, 0, 0, nullptr, nullptr);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_THROW(calls[0].out("written"), std::out_of_range);
  EXPECT_THROW(calls[0].in("written"), std::out_of_range);
  EXPECT_THROW(calls[1].out("bits"), std::out_of_range);
}

TEST_F(LineTest, CallsAreNumberedAndHandedOverOnce) {
  call(0);
  call(0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[1].number, calls[0].number + 1);
  EXPECT_THAT(swprobe::take(), testing::IsEmpty());
}

TEST_F(LineTest, CallsOfThePlatformItselfAreItsOwnAffair) {
  EXPECT_EQ(sample_nested(3), 7);
  EXPECT_THAT(take_lines(), ElementsAre("sample_nested(value=3) = 7"));
  // And they are not answered either.
  swprobe::plan("sample_result result -9");
  EXPECT_EQ(sample_nested(3), 7);
  EXPECT_EQ(call(3), -9);
}

TEST_F(LineTest, ACallThatNobodyHasAnswersMinusOne) {
  uint32_t value = 77;
  testing::internal::CaptureStderr();
  EXPECT_EQ(sample_absent(0, &value), -1);
  EXPECT_EQ(sample_absent(0, &value), -1);
  // Said once.
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "swprobe: no library after the probe has sample_absent; it answers -1\n");
  EXPECT_EQ(value, 77u);
  EXPECT_THAT(take_lines(), ElementsAre("sample_absent(unit=0) = -1 !",  //
                                        "sample_absent(unit=0) = -1 !"));
  EXPECT_EQ(swprobe::made_up_count(), 0u);
}

TEST_F(LineTest, TheErrorNumberIsThePlatformsOwn) {
  errno = 0;
  sample_scalars(0, 0, 0, nullptr, nullptr);
  EXPECT_EQ(errno, ERANGE);
}

}  // namespace
