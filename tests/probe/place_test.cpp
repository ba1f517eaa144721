// SPDX-License-Identifier: MIT
#include "place.h"

#include <gmock/gmock.h>
#include <stdexcept>

namespace {

using swprobe::find_argument;
using swprobe::find_call;
using swprobe::place_of;

TEST(PlaceTest, ANameAndAnIndex) {
  EXPECT_EQ(place_of("port").name, "port");
  EXPECT_EQ(place_of("port").index, 0u);
  EXPECT_EQ(place_of("ports[12]").name, "ports");
  EXPECT_EQ(place_of("ports[12]").index, 12u);
  EXPECT_EQ(place_of("table[3].mac[5]").name, "table[3].mac");
  EXPECT_EQ(place_of("table[3].mac[5]").index, 5u);
  EXPECT_EQ(place_of("table[3].vid").name, "table[3].vid");
}

TEST(PlaceTest, AnIndexIsANumber) {
  for (const char *text : {"a[]", "a[x]", "a[1x]", "a[-1]", "a]"}) {
    EXPECT_THROW(place_of(text), std::invalid_argument) << text;
  }
}

TEST(PlaceTest, ArgumentsAreFoundWithTheirFields) {
  const swprobe::Site *table = find_call("sample_table");
  ASSERT_NE(table, nullptr);
  ASSERT_TRUE(find_argument(*table, "table[1].mac"));
  EXPECT_EQ(find_argument(*table, "table[1].mac")->field->width, 1u);
  EXPECT_EQ(find_argument(*table, "last.port")->info->name, "last");
  EXPECT_FALSE(find_argument(*table, "table.mac"));
  EXPECT_FALSE(find_argument(*table, "last[0].port"));
  EXPECT_FALSE(find_argument(*table, "table"));
  EXPECT_FALSE(find_argument(*table, "last.ports"));
}

TEST(PlaceTest, CallsAreFoundByTheirWholeName) {
  EXPECT_NE(find_call("sample_scalars"), nullptr);
  EXPECT_EQ(find_call("sample_scalar"), nullptr);
  EXPECT_EQ(find_call(""), nullptr);
}

}  // namespace
