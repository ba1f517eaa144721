// SPDX-License-Identifier: MIT
#include "mac_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using swsh::parse_mac;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(MacText, ReadsColonsAndDashes) {
  EXPECT_THAT(parse_mac("02:00:5e:0A:fF:01"), ElementsAre(2, 0, 0x5e, 0x0a, 0xff, 1));
  EXPECT_THAT(parse_mac("02-00-5e-0A-fF-01"), ElementsAre(2, 0, 0x5e, 0x0a, 0xff, 1));
}

TEST(MacText, ReadsDots) {
  EXPECT_THAT(parse_mac("0200.5e0A.fF01"), ElementsAre(2, 0, 0x5e, 0x0a, 0xff, 1));
}

TEST(MacText, RefusesEverythingElse) {
  for (const char *word : {"",
                           "02",
                           "02:00:5e:00:00",
                           "02:00:5e:00:00:1",
                           "02:00:5e:00:00:001",
                           "02:00:5e:00:00:0g",
                           "02:00:5e:00:00:01:02",
                           "02:00-5e:00:00:01",
                           "02005e000001",
                           "02.00.5e.00.00.01",
                           "2:00:5e:00:00:001",
                           "+2:00:5e:00:00:01",
                           "-2:00:5e:00:00:01",
                           " 2:00:5e:00:00:01",
                           "0x:00:5e:00:00:01",
                           "02:00:5e:00:00: 1",
                           "0200.5e00.001",
                           "0200.5e00.00001",
                           "0200.5e00-0001",
                           "0200:5e00:0001",
                           "200.05e0.00001",
                           "0200.5e00.000g",
                           "0200.5e00.0001.",
                           "0200.5e00.0x01",
                           "0200..5e00.001"})
    EXPECT_THAT(parse_mac(word), IsEmpty()) << word;
}

TEST(MacText, WritesColonsAndSmallLetters) {
  const uint8_t mac[6] = {2, 0, 0x5e, 0x0a, 0xff, 1};
  EXPECT_EQ(swsh::mac_text(mac), "02:00:5e:0a:ff:01");
}

}  // namespace
