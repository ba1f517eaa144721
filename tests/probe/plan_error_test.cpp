// SPDX-License-Identifier: MIT
// What is wrong in a plan is named, and nothing of the rule takes effect.
#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "rule.h"
#include "sample/sample_test.h"

namespace {

std::string error_of(const std::string &rule) {
  try {
    swprobe::plan(rule);
  } catch (const std::invalid_argument &error) {
    return error.what();
  }
  return "no error";
}

struct Case {
  const char *rule;
  const char *error;
};

class PlanErrorTest : public SampleTest {
 protected:
  std::string path_ = testing::TempDir() + "swprobe_plan_test";
  void write(const std::string &text) { std::ofstream(path_) << text; }
  void TearDown() override {
    std::remove(path_.c_str());
    SampleTest::TearDown();
  }
  std::string file_error() {
    try {
      swprobe::read_plan(path_);
    } catch (const std::runtime_error &error) {
      return error.what();
    }
    return "no error";
  }
};

TEST_F(PlanErrorTest, NamesTheWrongWord) {
  const Case cases[] = {
      {"", "the rule is empty"},
      {"sample_nothing result 1", "no call is named 'sample_nothing'"},
      {"other_* result 1", "no call is named 'other_*'"},
      {"sample_result", "'result' is missing after 'sample_result'"},
      {"sample_result nth 3", "'result' is missing after '3'"},
      {"sample_result nth", "a number is missing after 'nth'"},
      {"sample_result nth 0 result 1", "'0' after 'nth' is not a number from 1 on"},
      {"sample_result from -1 result 1", "'-1' after 'from' is not a number from 1 on"},
      {"sample_result every x result 1", "'x' after 'every' is not a number from 1 on"},
      {"sample_result every result 1", "'result' after 'every' is not a number from 1 on"},
      {"sample_result result", "a number is missing after 'result'"},
      {"sample_result result x", "the result 'x' is not a signed 32-bit number"},
      {"sample_result result 0x80000000", "the result '0x80000000' is not a signed 32-bit number"},
      {"sample_result rsult -1", "'sample_result' has no argument 'rsult'"},
      {"sample_* prt 3 result 1", "'sample_*' has no argument 'prt'"},
      {"sample_scalars port result 1", "'result' for 'port' is not a number"},
      {"sample_scalars port", "a value is missing after 'port'"},
      {"sample_scalars port 0x100000000 result 1", "'0x100000000' does not fit into 'port'"},
      {"sample_scalars value 3 result 1",
       "'value' is an output; only what goes into a call can be compared"},
      {"sample_arrays mac 02:00:100 result 1", "'02:00:100' for 'mac' is not a number"},
      {"sample_arrays mac[six] 2 result 1", "the index of 'mac[six]' is not a number"},
      {"sample_arrays mac] 2 result 1", "'[' is missing in 'mac]'"},
      {"sample_table table.vid 2 result 1", "'sample_table' has no argument 'table.vid'"},
      {"sample_scalars result 1 port 3", "'port' is where 'out' or the end is expected"},
      {"sample_scalars result 1 out", "the name of an output is missing after 'out'"},
      {"sample_scalars result 1 out value", "a value is missing after 'value'"},
      {"sample_scalars result 1 out value x", "'x' for 'value' is not a number"},
      {"sample_scalars result 1 out port 2", "'port' is not written by 'sample_scalars'"},
      {"sample_scalars result 1 out velue 2", "'sample_scalars' has no argument 'velue'"},
      {"sample_update result 1 out steps 256", "'256' does not fit into 'steps'"},
  };
  for (const Case &wrong : cases) EXPECT_EQ(error_of(wrong.rule), wrong.error) << wrong.rule;
  EXPECT_EQ(call(0), 0);
}

TEST_F(PlanErrorTest, FilesHaveCommentsAndEmptyLines) {
  write("# faults\n\n  sample_result nth 2 result -5   # the second\n\tsample_* result 1\n");
  const auto rules = swprobe::read_plan(path_);
  ASSERT_EQ(rules.size(), 2u);
  EXPECT_EQ(rules[0].n, 2u);
  EXPECT_EQ(rules[0].result, -5);
  EXPECT_EQ(rules[1].call, "sample_*");
}

TEST_F(PlanErrorTest, FilesAreNamedWithTheLine) {
  write("# faults\n\nsample_result result -5\nsample_result nht 2 result -5\n");
  EXPECT_EQ(file_error(), path_ + ":4: 'sample_result' has no argument 'nht'");
}

TEST_F(PlanErrorTest, FilesThatCannotBeReadAreNamed) {
  EXPECT_EQ(file_error(), "cannot read '" + path_ + "': No such file or directory");
  path_ = testing::TempDir();
  EXPECT_EQ(file_error(), "cannot read '" + path_ + "': Is a directory");
}

TEST_F(PlanErrorTest, RulesOfAListAreCounted) {
  EXPECT_EQ(swprobe::parse_plan("HERE", "sample_result result 1; sample_* result 2 ;").size(), 2u);
  try {
    swprobe::parse_plan("HERE", "sample_result result 1; sample_result");
    FAIL();
  } catch (const std::runtime_error &error) {
    EXPECT_STREQ(error.what(), "HERE: rule 2: 'result' is missing after 'sample_result'");
  }
}

}  // namespace
