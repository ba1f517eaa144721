// SPDX-License-Identifier: MIT
#include "run/filter.h"

#include <gtest/gtest.h>

#include "output/writer.h"
#include "run/words.h"

namespace {

using namespace swsh;

Answer ports() {
  Answer answer = {Shape::table, {}, ""};
  for (const int64_t port : {3, 13, 20})
    answer.records.push_back(Record().add("port", port).add("link", std::string("up")));
  return answer;
}

std::string shown(const std::string &line, const Answer &answer, Format format = Format::human) {
  std::vector<std::string> words = split_words(line).words;
  std::vector<Filter> filters;
  EXPECT_FALSE(take_filters(words, filters));
  EXPECT_EQ(words, (std::vector<std::string>{"port", "show"}));
  return answer_text(filtered(answer, filters), format);
}

TEST(Filter, IncludesRowsBelowTheHead) {
  EXPECT_EQ(shown("port show | include 3", ports()), "port  link\n3     up\n13    up\n");
  EXPECT_EQ(shown("port show | include 3 | include 1", ports()), "port  link\n13    up\n");
  EXPECT_EQ(shown("port show | include 3", ports(), Format::json),
            "[{\"port\":3,\"link\":\"up\"},{\"port\":13,\"link\":\"up\"}]\n");
}

TEST(Filter, IncludesLinesOfText) {
  const Answer text = {Shape::text, {}, "vlan add 10\nport set 3 vlan 10\n"};
  EXPECT_EQ(shown("port show | include port", text), "port set 3 vlan 10\n");
}

TEST(Filter, Counts) {
  EXPECT_EQ(shown("port show | count", ports()), "3\n");
  EXPECT_EQ(shown("port show | include 20 | count", ports(), Format::json), "[{\"count\":1}]\n");
  EXPECT_EQ(shown("port show", ports()), answer_text(ports(), Format::human));
}

TEST(Filter, RefusesWhatIsNone) {
  for (const char *line :
       {"port show |", "port show | grep 3", "port show | include", "port show | count 3"}) {
    std::vector<std::string> words = split_words(line).words;
    std::vector<Filter> filters;
    const std::optional<Fault> fault = take_filters(words, filters);
    ASSERT_TRUE(fault) << line;
    EXPECT_EQ(fault->expected, (std::vector<std::string>{"include WORD", "count"}));
  }
}

}  // namespace
