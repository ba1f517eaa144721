// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/field.h>

#include "support/library_test.h"

namespace {

using swctl_test::Lines;

constexpr uint32_t kInitUnit = 1;
constexpr const char *kTemplate = "rtk_acl_template_set";
constexpr const char *kOperation = "rtk_acl_ruleOperation_set";

std::string head(const char *call, uint32_t unit) {
  return std::string(call) + "(unit=" + std::to_string(unit) + ", ";
}

void add_templates(Lines &lines, uint32_t unit) {
  lines.push_back(head(kTemplate, unit) + "index=5, codes=[1 2 11 14 15 16 23 24 31 33 34 0]) = 0");
  lines.push_back(head(kTemplate, unit) + "index=6, codes=[1 2 14 5 6 7 15 16 11 34 0 0]) = 0");
}

void add_selector(Lines &lines, uint32_t unit, int index, int first, int second) {
  lines.push_back(head("rtk_acl_templateSelector_set", unit) + "index=" + std::to_string(index) +
                  ", word1=" + std::to_string(first) + ", word2=" + std::to_string(second) +
                  ", word3=0) = 0");
}

void add_pair(Lines &lines, uint32_t unit, int rule) {
  for (int half : {0, 1}) {
    lines.push_back(head("rtk_acl_ruleEntryField_write", unit) +
                    "table=0, rule=" + std::to_string(rule + half) + ", field=0, data=[0" +
                    std::to_string(half) + "], mask=[03]) = 0");
  }
  lines.push_back(head(kOperation, unit) + "table=0, rule=" + std::to_string(rule) +
                  ", operation.word=[0 1 0]) = 0");
}

void add_block(Lines &lines, uint32_t unit, int first, int last) {
  for (int rule = first; rule < last; rule += 2) add_pair(lines, unit, rule);
}

Lines whole_sequence(uint32_t unit) {
  Lines lines;
  add_templates(lines, unit);
  add_selector(lines, unit, 10, 0, 1);
  add_selector(lines, unit, 11, 0, 1);
  add_block(lines, unit, 1280, 1535);
  add_selector(lines, unit, 7, 5, 0);
  add_selector(lines, unit, 6, 0, 0);
  add_selector(lines, unit, 5, 6, 0);
  add_selector(lines, unit, 8, 4, 3);
  add_selector(lines, unit, 9, 4, 3);
  add_block(lines, unit, 1024, 1279);
  add_selector(lines, unit, 4, 5, 0);
  add_selector(lines, unit, 3, 5, 0);
  add_selector(lines, unit, 0, 4, 3);
  add_selector(lines, unit, 1, 4, 3);
  add_block(lines, unit, 0, 255);
  return lines;
}

class FieldInit : public swctl_test::LibraryTest {
 protected:
  // Runs it with the nth call of `name` answering `result`.
  static swctl_test::Printed run_with(const char *name, uint64_t nth, int32_t result,
                                      int32_t *answered) {
    swprobe::clear_plan();
    swprobe::Answer answer;
    answer.result = result;
    swprobe::answer(name, nth, answer);
    swprobe::forget();
    return swctl_test::printed_by([&] { *answered = user_field_init(0, kInitUnit); });
  }
};

std::string complaint(const std::string &line, int32_t result) {
  return "user_field_init:[" + line + "] call api failed, ret=" + std::to_string(result) + " \n";
}

TEST_F(FieldInit, MakesTheseCallsInThisOrder) {
  for (uint32_t unit : {1u, 0u}) {
    EXPECT_EQ(user_field_init(0, unit), 0);
    EXPECT_EQ(swprobe::take_lines(), whole_sequence(unit));
  }
}

TEST_F(FieldInit, LeavesTheChipSo) {
  EXPECT_EQ(user_field_init(0, kInitUnit), 0);
  const vchip::AclFormView form = vchip::acl_form(kInitUnit);
  const auto word = [&](size_t selector, size_t index) {
    return form.selectors.at(selector).at(index);
  };
  EXPECT_EQ(form.templates.at(5).at(2), 11u);
  EXPECT_EQ(form.templates.at(6).at(3), 5u);
  EXPECT_EQ(word(2, 0) + word(2, 1) + word(2, 2), 0u) << "selector 2 is left alone";
  EXPECT_EQ(word(10, 1), 1u);
  EXPECT_EQ(word(5, 0), 6u);
  for (int32_t rule = 0; rule < VCHIP_ACL_RULES; ++rule) {
    const bool prepared = rule < 256 || rule >= 1024;
    const vchip::AclRuleView view = vchip::acl_rule(kInitUnit, rule);
    ASSERT_EQ(view.used, prepared) << rule;
    ASSERT_EQ(view.joined, prepared && rule % 2 == 0) << rule;
    ASSERT_FALSE(view.valid) << rule;
  }
  EXPECT_TRUE(vchip::acl_rules(0).empty()) << "the other unit is untouched";
}

TEST_F(FieldInit, WritesTheSameValuesWhenRunAgain) {
  user_field_init(0, kInitUnit);
  const auto rules = vchip::acl_rules(kInitUnit);
  const auto form = vchip::acl_form(kInitUnit);
  EXPECT_EQ(user_field_init(0, kInitUnit), 0);
  EXPECT_EQ(vchip::acl_rules(kInitUnit), rules);
  EXPECT_EQ(vchip::acl_form(kInitUnit), form);
}

TEST_F(FieldInit, IgnoresTheLeadingArgument) {
  EXPECT_EQ(user_field_init(0xFFFFFFFF, kInitUnit), 0);
  EXPECT_EQ(swprobe::take_lines(), whole_sequence(kInitUnit));
}

TEST_F(FieldInit, StopsAtAFailedTemplate) {
  const struct {
    uint64_t nth;
    const char *line;
  } kCases[] = {{1, "00283"}, {2, "00317"}};
  for (const auto &test : kCases) {
    int32_t answered = 0;
    EXPECT_PRINTED(run_with(kTemplate, test.nth, -7, &answered), complaint(test.line, -7), "");
    EXPECT_EQ(answered, -7);
    EXPECT_EQ(swprobe::take().size(), test.nth);
  }
}

// The number of calls up to and including the operation of the nth pair.
size_t calls_up_to_pair(size_t nth) {
  const size_t pair_calls = 3 * nth;
  if (nth <= 128) return 4 + pair_calls;
  return (nth <= 256 ? 9 : 13) + pair_calls;
}

// init_failure_test.cpp does the same for every pair.
TEST_F(FieldInit, StopsAtAFailedOperation) {
  const Lines sequence = whole_sequence(kInitUnit);
  for (size_t nth : {1, 2, 128, 129, 256, 257, 384}) {
    const char *line = nth <= 128 ? "00368" : nth <= 256 ? "00460" : "00534";
    int32_t answered = 0;
    ASSERT_EQ(run_with(kOperation, nth, -5, &answered).standard_output, complaint(line, -5)) << nth;
    ASSERT_EQ(answered, -5) << nth;
    Lines made = swprobe::take_lines();
    ASSERT_EQ(made.size(), calls_up_to_pair(nth)) << nth;
    const std::string refused = made.back();
    made.pop_back();
    ASSERT_TRUE(std::equal(made.begin(), made.end(), sequence.begin())) << nth;
    const std::string intended = sequence.at(made.size());
    ASSERT_EQ(refused, intended.substr(0, intended.size() - 1) + "-5 !") << nth;
  }
}

TEST_F(FieldInit, RulesOfLaterBlocksStayUntouchedAfterAFailure) {
  int32_t answered = 0;
  run_with(kOperation, 2, -5, &answered);
  EXPECT_TRUE(vchip::acl_rule(kInitUnit, 1283).used) << "its field was written before";
  EXPECT_TRUE(vchip::acl_rule(kInitUnit, 1280).joined);
  EXPECT_FALSE(vchip::acl_rule(kInitUnit, 1282).joined);
  EXPECT_EQ(vchip::acl_rules(kInitUnit).size(), 4u);
}

TEST_F(FieldInit, PositiveResultsAreSuccessAndTheAnswerIsZero) {
  for (const char *call : {kTemplate, kOperation}) {
    swprobe::clear_plan();
    swctl_test::chip_answers(call, 9);
    EXPECT_PRINTED(swctl_test::printed_by([] { EXPECT_EQ(user_field_init(0, kInitUnit), 0); }), "",
                   "");
    EXPECT_EQ(swprobe::take().size(), whole_sequence(kInitUnit).size());
  }
}

TEST_F(FieldInit, GoesOnAfterFailedSelectorsAndFieldWrites) {
  for (const char *call : {"rtk_acl_templateSelector_set", "rtk_acl_ruleEntryField_write"}) {
    swprobe::clear_plan();
    swctl_test::chip_answers(call, -1);
    EXPECT_PRINTED(swctl_test::printed_by([] { EXPECT_EQ(user_field_init(0, kInitUnit), 0); }), "",
                   "");
    EXPECT_EQ(swprobe::take().size(), whole_sequence(kInitUnit).size());
  }
}

}  // namespace
