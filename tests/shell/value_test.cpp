// SPDX-License-Identifier: MIT
#include "command/value.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace swsh {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Value, NumbersAreDecimalOrHexadecimal) {
  EXPECT_EQ(parse_value(number(0, 4095), "10").argument.number, 10);
  EXPECT_EQ(parse_value(number(0, 4095), "0x1F").argument.number, 31);
  EXPECT_EQ(parse_value(number(-5, 5), "-5").argument.number, -5);
}

TEST(Value, ANumberOutsideItsRangeIsRefused) {
  EXPECT_EQ(parse_value(number(1, 4), "0").fault, "\"0\" is out of range");
  EXPECT_EQ(parse_value(number(1, 4), "5").fault, "\"5\" is out of range");
  EXPECT_EQ(parse_value(number(1, 4), "1").fault, "");
  EXPECT_EQ(parse_value(number(1, 4), "4").fault, "");
}

TEST(Value, InterfacesEndAtTheLastFrontPort) {
  EXPECT_EQ(parse_value(interface_number(), "26").argument.number, 26);
  EXPECT_NE(parse_value(interface_number(), "27").fault, "");
  EXPECT_NE(parse_value(interface_number(), "0").fault, "");
  EXPECT_EQ(parse_value(interface_number(0), "0").fault, "");
}

TEST(Value, ListsAreSorted) {
  EXPECT_THAT(parse_value(interface_list(), "7,1-3").argument.numbers, ElementsAre(1, 2, 3, 7));
}

TEST(Value, AListKeepsItsWord) {
  EXPECT_EQ(parse_value(interface_list(), "7,1-3").argument.word, "7,1-3");
}

TEST(Value, AChoiceStandsForItsValue) {
  const Type colour = choice({{"red", 7, ""}, {"reddish", 8, ""}});
  EXPECT_EQ(parse_value(colour, "reddish").argument.number, 8);
  EXPECT_EQ(parse_value(colour, "redd").fault, "\"redd\" is no choice");
  EXPECT_EQ(parse_value(on_off(), "on").argument.number, 1);
  EXPECT_EQ(parse_value(on_off(), "off").argument.number, 0);
}

TEST(Value, AListOfChoicesIsTheirOr) {
  const Type bits = choice_list({{"one", 1, ""}, {"two", 2, ""}, {"top", 0x80000000, ""}});
  EXPECT_EQ(parse_value(bits, "two").argument.number, 2);
  EXPECT_EQ(parse_value(bits, "two,one,two").argument.number, 3);
  EXPECT_EQ(parse_value(bits, "top,one").argument.number, 0x80000001);
  EXPECT_EQ(parse_value(bits, "top,one").argument.word, "top,one");
  EXPECT_EQ(parse_value(bits, "one,three").fault, "\"three\" is no choice");
  EXPECT_EQ(parse_value(bits, "one,").fault, "\"\" is no choice");
  EXPECT_EQ(parse_value(bits, "").fault, "\"\" is no choice");
}

TEST(Value, BytesArePairsOfHexadecimalDigits) {
  EXPECT_THAT(parse_value(bytes(4), "0a").argument.numbers, ElementsAre(10));
  EXPECT_THAT(parse_value(bytes(4), "00fFA5").argument.numbers, ElementsAre(0, 255, 165));
  EXPECT_THAT(parse_value(bytes(4), "00:ff:a5").argument.numbers, ElementsAre(0, 255, 165));
  EXPECT_EQ(parse_value(bytes(4), "00ff").argument.word, "00ff");
  EXPECT_EQ(parse_value(bytes(4), "").fault, "\"\" is no byte");
  EXPECT_EQ(parse_value(bytes(4), "00f").fault, "\"f\" is no byte");
  EXPECT_EQ(parse_value(bytes(4), "0x0a").fault, "\"0x\" is no byte");
  EXPECT_EQ(parse_value(bytes(4), "00:").fault, "\"\" is no byte");
  EXPECT_EQ(parse_value(bytes(4), "00::01").fault, "\":0\" is no byte");
}

TEST(Value, BytesAreNoMoreThanThereIsRoomFor) {
  EXPECT_EQ(parse_value(bytes(4), "01020304").fault, "");
  EXPECT_EQ(parse_value(bytes(4), "0102030405").fault, "5 bytes are too many");
}

TEST(Value, ABandwidthHasAUnit) {
  const Type rate = bandwidth(0, 16777200);
  EXPECT_EQ(parse_value(rate, "64kbit").argument.number, 64);
  EXPECT_EQ(parse_value(rate, "10mbit").argument.number, 10000);
  EXPECT_EQ(parse_value(rate, "1gbit").argument.number, 1000000);
  EXPECT_EQ(parse_value(rate, "0mbit").fault, "");
  EXPECT_EQ(parse_value(rate, "16777200kbit").fault, "");
  EXPECT_EQ(parse_value(rate, "16777201kbit").fault, "\"16777201\" is out of range");
  EXPECT_EQ(parse_value(rate, "17gbit").fault, "\"17\" is out of range");
  EXPECT_EQ(parse_value(rate, "10").fault, "\"10\" has no unit");
  EXPECT_EQ(parse_value(rate, "10Mbit").fault, "\"10Mbit\" has no unit");
  EXPECT_NE(parse_value(rate, "mbit").fault, "");
  EXPECT_NE(parse_value(rate, "-1mbit").fault, "");
  EXPECT_NE(parse_value(bandwidth(1500, 3000), "1mbit").fault, "");
  EXPECT_EQ(parse_value(bandwidth(1500, 3000), "2mbit").fault, "");
}

TEST(Value, AnyWordIsAText) {
  EXPECT_EQ(parse_value(text(), "").fault, "");
  EXPECT_EQ(parse_value(text(), "a b").argument.word, "a b");
}

TEST(Value, UsageShowsTheFormOfAValue) {
  EXPECT_EQ(value_usage(number(1, 9, "kbit/s")), "1-9");
  EXPECT_EQ(value_usage(numbers(1, 9)), "LIST");
  EXPECT_EQ(value_usage(interface_number()), "PORT");
  EXPECT_EQ(value_usage(interface_list()), "PORTS");
  EXPECT_EQ(value_usage(on_off()), "on|off");
  EXPECT_EQ(value_usage(choice_list({{"a", 1, ""}})), "LIST");
  EXPECT_EQ(value_usage(bandwidth(0, 1)), "RATE");
  EXPECT_EQ(value_usage(text()), "TEXT");
  EXPECT_EQ(value_usage(flag()), "");
}

TEST(Value, WhatIsExpectedNamesRangeAndUnit) {
  EXPECT_THAT(value_expected(number(1, 9, "kbit/s")), ElementsAre("a number 1-9 kbit/s"));
  EXPECT_THAT(value_expected(numbers(1, 9)), ElementsAre("a list of numbers 1-9 such as 1-4,7"));
  EXPECT_THAT(value_expected(interface_number()), ElementsAre("an interface number 1-26"));
  EXPECT_THAT(value_expected(interface_list(0)),
              ElementsAre("interface numbers 0-26 such as 1-4,7, or all"));
  EXPECT_THAT(value_expected(on_off()), ElementsAre("on", "off"));
  EXPECT_THAT(value_expected(choice_list({{"a", 1, ""}, {"b", 2, ""}})), ElementsAre("a", "b"));
  EXPECT_THAT(value_expected(bandwidth(1, 9)),
              ElementsAre("a rate 1-9 kbit such as 64kbit, 10mbit or 1gbit"));
  EXPECT_THAT(value_expected(text()), ElementsAre("a text"));
  EXPECT_THAT(value_expected(flag()), IsEmpty());
}

}  // namespace
}  // namespace swsh
