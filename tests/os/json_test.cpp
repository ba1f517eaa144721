// SPDX-License-Identifier: MIT
#include "os/json.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

using os::Json;

TEST(Json, MembersKeepTheirOrder) {
  EXPECT_EQ(os::json_text(os::parse_json(R"({"b":1,"a":[true,null]})")),
            R"({"b":1,"a":[true,null]})");
  EXPECT_EQ(os::json_text(Json{{"a", 1}}, 2), "{\n  \"a\": 1\n}");
}

TEST(Json, ATextIsOneValueAndNothingMore) {
  for (const char *text : {"", "{", "[1,]", "1 2", "\"a"}) {
    EXPECT_THROW(os::parse_json(text), nlohmann::json::exception) << text;
    EXPECT_TRUE(os::try_parse_json(std::string(text)).is_discarded()) << text;
    std::istringstream stream(text);
    EXPECT_TRUE(os::try_parse_json(stream).is_discarded()) << text;
  }
  std::istringstream stream(" [7]\n");
  EXPECT_EQ(os::try_parse_json(stream), Json({7}));
}

TEST(Json, BytesThatAreNoTextAreReplaced) {
  EXPECT_EQ(os::json_text(Json("a\xff")), "\"a\xef\xbf\xbd\"");
}

TEST(Json, NumbersOfSixtyFourBits) {
  EXPECT_EQ(os::json_text(os::parse_json("[18446744073709551615,-9223372036854775808]")),
            "[18446744073709551615,-9223372036854775808]");
}

}  // namespace
