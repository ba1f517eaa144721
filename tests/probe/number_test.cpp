// SPDX-License-Identifier: MIT
#include "number.h"

#include <cstdint>
#include <gmock/gmock.h>

namespace {

using swprobe::fits;
using swprobe::parse_number;
using swprobe::parse_numbers;
using swprobe::same;

TEST(NumberTest, DecimalAndHexadecimal) {
  EXPECT_EQ(parse_number("0"), 0);
  EXPECT_EQ(parse_number("010"), 10);
  EXPECT_EQ(parse_number("-1002"), -1002);
  EXPECT_EQ(parse_number("0xf2000000"), 0xf2000000);
  EXPECT_EQ(parse_number("-0x10"), -16);
  EXPECT_EQ(parse_number("-9223372036854775808"), INT64_MIN);
  EXPECT_EQ(parse_number("0xffffffffffffffff"), -1);
}

TEST(NumberTest, NothingElse) {
  for (const char *word : {"", "-", "x", "1x", "0x", "0xg", "--1", "+1", "1.5", " 1",
                           "-9223372036854775809", "0x10000000000000000"}) {
    EXPECT_EQ(parse_number(word), std::nullopt) << word;
  }
}

TEST(NumberTest, BytesBetweenColons) {
  EXPECT_EQ(parse_numbers("02:0:ff"), (std::vector<int64_t>{2, 0, 255}));
  EXPECT_EQ(parse_numbers("12"), std::vector<int64_t>{12});
  for (const char *word : {":", "1:", ":1", "1::2", "100:0", "g:1", "x"}) {
    EXPECT_EQ(parse_numbers(word), std::nullopt) << word;
  }
}

TEST(NumberTest, FitsSignedOrUnsigned) {
  EXPECT_TRUE(fits(255, 1));
  EXPECT_TRUE(fits(-128, 1));
  EXPECT_FALSE(fits(256, 1));
  EXPECT_FALSE(fits(-129, 1));
  EXPECT_TRUE(fits(UINT32_MAX, 4));
  EXPECT_FALSE(fits(int64_t{1} << 32, 4));
  EXPECT_TRUE(fits(INT64_MIN, 8));
}

TEST(NumberTest, SameBitsInAWidth) {
  EXPECT_TRUE(same(-1, 0xffffffff, 4));
  EXPECT_FALSE(same(-1, 0xffffffff, 8));
  EXPECT_TRUE(same(-1, 0xff, 1));
  EXPECT_FALSE(same(1, 2, 1));
}

}  // namespace
