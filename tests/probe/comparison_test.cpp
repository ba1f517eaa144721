// SPDX-License-Identifier: MIT
// What may be otherwise than recorded.
#include "comparison.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "sample/sample_test.h"

namespace {

using swprobe::Comparison;
using testing::ElementsAre;
using testing::IsEmpty;

class ComparisonTest : public SampleTest {
 protected:
  const std::string path_ = testing::TempDir() + "swprobe_comparison_test";
  Comparison comparison_;

  void TearDown() override {
    std::remove(path_.c_str());
    SampleTest::TearDown();
  }

  static swprobe::Call last_call() { return swprobe::take().back(); }
  static swprobe::Call scalars(uint32_t unit, int32_t port, uint32_t mask) {
    uint32_t value = 0;
    sample_scalars(unit, port, mask, &value, nullptr);
    return last_call();
  }
  static swprobe::Call table(int32_t vid, int32_t port) {
    sample_entry found[2] = {};
    sample_entry last = kEntry;
    last.vid = static_cast<uint16_t>(vid);
    last.port = port;
    sample_table(2, found, &last);
    return last_call();
  }
  static std::string error_of(const std::string &rule) {
    try {
      Comparison().add_rule(rule);
    } catch (const std::invalid_argument &error) {
      return error.what();
    }
    return "no error";
  }
};

TEST_F(ComparisonTest, WhatGoesIntoACallIsCompared) {
  const auto call = scalars(1, 2, 3);
  EXPECT_THAT(comparison_.differences(call, scalars(1, 2, 3)), IsEmpty());
  EXPECT_THAT(comparison_.differences(call, scalars(0, 2, 4)), ElementsAre("unit", "mask"));
  EXPECT_TRUE(comparison_.same(call, scalars(1, 2, 3)));
  EXPECT_FALSE(comparison_.same(call, scalars(1, 2, 4)));
}

TEST_F(ComparisonTest, ResultsAndOutputsAreNot) {
  auto call = scalars(1, 2, 3);
  call.result = -7;
  call.arguments[3].after.clear();
  EXPECT_THAT(comparison_.differences(call, scalars(1, 2, 3)), IsEmpty());
}

TEST_F(ComparisonTest, ANullAddressIsAnother) {
  const auto call = scalars(0, -1, 0);
  sample_scalars(0, -1, 0, nullptr, nullptr);
  EXPECT_THAT(comparison_.differences(call, last_call()), ElementsAre("value"));
}

TEST_F(ComparisonTest, AnotherNumberOfElementsOrRecords) {
  const uint16_t list[3] = {};
  const uint8_t mac[6] = {};
  int32_t found[2] = {};
  sample_arrays(list, mac, 1, found);
  const auto call = last_call();
  sample_arrays(list, mac, 2, found);
  EXPECT_THAT(comparison_.differences(call, last_call()), ElementsAre("count"));
  sample_entry entries[2] = {};
  sample_entry last = kEntry;
  sample_table(1, entries, &last);
  const auto one = last_call();
  EXPECT_THAT(comparison_.differences(one, table(10, 3)),
              ElementsAre("count", "table[1].vid", "table[1].mac", "table[1].port",
                          "table[1].inner.flags"));
}

TEST_F(ComparisonTest, ArgumentsMayDiffer) {
  comparison_.add_rule("differ sample_scalars unit mask");
  EXPECT_TRUE(comparison_.same(scalars(1, 2, 3), scalars(0, 2, 4)));
  EXPECT_FALSE(comparison_.same(scalars(1, 2, 3), scalars(0, 1, 4)));
  EXPECT_EQ(comparison_.key(scalars(1, 2, 3)), comparison_.key(scalars(0, 2, 4)));
  EXPECT_NE(comparison_.key(scalars(1, 2, 3)), comparison_.key(scalars(0, 1, 4)));
}

TEST_F(ComparisonTest, SoMayFieldsAndWholeRecords) {
  Comparison field;
  field.add_rule("differ sample_t* last.vid");
  EXPECT_TRUE(field.same(table(1, 3), table(2, 3)));
  EXPECT_FALSE(field.same(table(1, 3), table(2, 4)));
  Comparison record;
  record.add_rule("differ sample_table last");
  EXPECT_TRUE(record.same(table(1, 3), table(2, 4)));
}

TEST_F(ComparisonTest, NamesMayHaveWildcards) {
  comparison_.add_rule("unordered sample_r*");
  comparison_.add_rule("ignore sample_w?dths sample_area");
  EXPECT_TRUE(comparison_.is_unordered("sample_result"));
  EXPECT_FALSE(comparison_.is_unordered("sample_widths"));
  EXPECT_TRUE(comparison_.is_ignored("sample_widths"));
  EXPECT_TRUE(comparison_.is_ignored("sample_area"));
  EXPECT_FALSE(comparison_.is_ignored("sample_result"));
}

TEST_F(ComparisonTest, WrongRulesAreRefused) {
  EXPECT_EQ(error_of("diffre sample_result value"),
            "'diffre' is none of differ, unordered and ignore");
  EXPECT_EQ(error_of("differ"), "the name of a call is missing after 'differ'");
  EXPECT_EQ(error_of("ignore"), "the name of a call is missing after 'ignore'");
  EXPECT_EQ(error_of("differ sample_result"),
            "the name of an argument is missing after 'sample_result'");
  EXPECT_EQ(error_of("differ sample_rseult value"), "no call is named 'sample_rseult'");
  EXPECT_EQ(error_of("unordered sample_result sample_x"), "no call is named 'sample_x'");
  EXPECT_EQ(error_of("differ sample_* value vlaue"), "'sample_*' has no argument 'vlaue'");
  EXPECT_EQ(error_of("differ sample_table last.vdi"), "'sample_table' has no argument 'last.vdi'");
}

TEST_F(ComparisonTest, AFileIsRefusedWithItsLine) {
  std::ofstream(path_) << "# rules\n\ndiffer sample_result value # a time\nunordered\n";
  try {
    comparison_.read(path_);
    ADD_FAILURE();
  } catch (const std::runtime_error &error) {
    EXPECT_EQ(error.what(), path_ + ":4: the name of a call is missing after 'unordered'");
  }
  EXPECT_THROW(comparison_.read("/nowhere/at/all"), std::runtime_error);
}

}  // namespace
