// SPDX-License-Identifier: MIT
#include "number_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <set>

namespace swsh {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int64_t kMost = std::numeric_limits<int64_t>::max();

std::string list_fault(std::string_view word) {
  const ParsedList parsed = parse_number_list(word, 1, 26);
  EXPECT_EQ(parsed.fault.empty(), !parsed.numbers.empty()) << word;
  return parsed.fault;
}

TEST(Number, MayBeAsLargeAsItsRange) {
  EXPECT_EQ(parse_number("9223372036854775807", 0, kMost).number, kMost);
  EXPECT_EQ(parse_number("9223372036854775808", 0, kMost).fault, "out of range");
  EXPECT_EQ(parse_number("0xffffffff", 0, kMost).number, 0xffffffff);
}

TEST(Number, IsNothingButDigits) {
  for (const char *word : {"", " 1", "1 ", "+1", "1.5", "0x", "0x-1", "0xg", "ten", "1e3", "-"}) {
    EXPECT_EQ(parse_number(word, -10, 4000).fault, "not a number") << word;
  }
}

TEST(NumberList, TakesNumbersAndRanges) {
  EXPECT_THAT(parse_number_list("3", 1, 26).numbers, ElementsAre(3));
  EXPECT_THAT(parse_number_list("1-4,7", 1, 26).numbers, ElementsAre(1, 2, 3, 4, 7));
  EXPECT_THAT(parse_number_list("5-5", 1, 26).numbers, ElementsAre(5));
  EXPECT_THAT(parse_number_list("0x10-0x12", 1, 26).numbers, ElementsAre(16, 17, 18));
}

TEST(NumberList, CountsEachNumberOnceInOrder) {
  EXPECT_THAT(parse_number_list("9,2-4,3,9,1", 1, 26).numbers, ElementsAre(1, 2, 3, 4, 9));
}

TEST(NumberList, NamesTheItemThatIsWrong) {
  EXPECT_EQ(list_fault("1-4,30"), "\"30\" is out of range");
  EXPECT_EQ(list_fault("1-40"), "\"40\" is out of range");
  EXPECT_EQ(list_fault("0-4"), "\"0\" is out of range");
  EXPECT_EQ(list_fault("1,x"), "\"x\" is not a number");
  EXPECT_EQ(list_fault("4-1"), "the range 4-1 runs backwards");
  EXPECT_EQ(list_fault("1-2-3"), "\"2-3\" is not a number");
  EXPECT_EQ(list_fault("1-"), "\"\" is not a number");
}

TEST(NumberList, MissesNoNumber) {
  for (const char *word : {"", ",", "1,", ",1", "1,,2"}) {
    EXPECT_EQ(list_fault(word), "a number is missing") << word;
  }
}

TEST(NumberList, ChecksARangeBeforeItIsSpreadOut) {
  EXPECT_EQ(list_fault("1-99999999999"), "\"99999999999\" is out of range");
}

TEST(NumberListText, ShortensThreeInARow) {
  EXPECT_EQ(number_list_text({}), "");
  EXPECT_EQ(number_list_text({7}), "7");
  EXPECT_EQ(number_list_text({1, 2}), "1,2");
  EXPECT_EQ(number_list_text({1, 2, 3}), "1-3");
  EXPECT_EQ(number_list_text({1, 2, 3, 4, 7}), "1-4,7");
  EXPECT_EQ(number_list_text({1, 3, 4, 6, 7, 8}), "1,3,4,6-8");
}

TEST(NumberListText, ReadsBackAsTheSameList) {
  std::mt19937 random(20261120);
  for (int round = 0; round < 1000; ++round) {
    std::set<int64_t> chosen;
    const auto count = 1 + random() % 20;
    while (chosen.size() < count) chosen.insert(static_cast<int64_t>(1 + random() % 26));
    const std::vector<int64_t> numbers(chosen.begin(), chosen.end());
    const std::string text = number_list_text(numbers);
    ASSERT_EQ(parse_number_list(text, 1, 26).numbers, numbers) << text;
  }
}

}  // namespace
}  // namespace swsh
