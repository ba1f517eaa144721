// SPDX-License-Identifier: MIT
#include "slip.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace swsh {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Slip, IsOneLetter) {
  for (const char *word : {"sped", "speeed", "spead", "psee", "Speed", "SPEED", "xspeed", "speedx"})
    EXPECT_EQ(is_slip(word, "speed"), std::string(word) != "psee") << word;
  EXPECT_TRUE(is_slip("prot", "port"));
  EXPECT_TRUE(is_slip("por", "port"));
  EXPECT_TRUE(is_slip("ort", "port"));
  EXPECT_TRUE(is_slip("Prot", "port"));
}

TEST(Slip, IsNotMore) {
  for (const char *word : {"", "s", "spd", "deeps", "speedxy", "sxexd", "pseede"})
    EXPECT_FALSE(is_slip(word, "speed")) << word;
  EXPECT_FALSE(is_slip("abcd", "badc"));
}

TEST(Slip, SuggestsWhatIsClose) {
  EXPECT_THAT(one_slip_away("shw", {"show", "set", "shw1"}), ElementsAre("show", "shw1"));
  EXPECT_THAT(one_slip_away("stat", {"show", "set"}), IsEmpty());
}

TEST(Slip, SuggestsNothingForNumbersAndShortWords) {
  EXPECT_THAT(one_slip_away("12", {"10", "100"}), IsEmpty());
  EXPECT_THAT(one_slip_away("1001", {"1000"}), IsEmpty());
  EXPECT_THAT(one_slip_away("no", {"on", "off"}), IsEmpty());
  EXPECT_THAT(one_slip_away("", {"a"}), IsEmpty());
}

}  // namespace
}  // namespace swsh
