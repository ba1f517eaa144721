// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/field.h>
#include <swctl/platform/sdk.h>

#include <map>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;

constexpr uint32_t kUnit = 1;
constexpr int32_t kRule = 7;
constexpr uint32_t kNone = 0xFFFFFFFF;
constexpr const char *kGet = "rtk_acl_ruleAction_get";
constexpr const char *kSet = "rtk_acl_ruleAction_set";

using Words = std::vector<uint32_t>;
using Changes = std::map<size_t, uint32_t>;

int32_t add(uint32_t action, uint32_t param0, uint32_t param1, uint32_t lead = 0) {
  return user_field_action_add(lead, kUnit, kRule, action, &param0, &param1);
}

Words chip_words() {
  return vchip::acl_rule(kUnit, kRule).action;
}

Words with(Words words, const Changes &changes) {
  for (const auto &[word, value] : changes) words.at(word) = value;
  return words;
}

struct ActionCase {
  uint32_t action, param0, param1;
  Changes changes;
};
const ActionCase kActionCases[] = {
    {1, 5, 9, {{23, 1}, {24, 5}}},
    {1, kNone, 9, {{23, 1}, {24, kNone}}},
    {2, 5, 9, {{35, 1}, {36, 5}}},
    {11, 5, 9, {{29, 1}, {30, 0}, {31, 5}}},
    {21, 5, 9, {{29, 1}, {30, 2}, {31, 5}}},
    {24, 0, 9, {{0, 1}, {1, 2}, {2, 28}}},
    {24, 1, 9, {{0, 1}, {1, 2}, {2, 28}, {5, 1}}},
    {24, 2, 9, {{0, 1}, {1, 2}, {2, 28}}},
    {24, 7, 9, {{0, 1}, {1, 2}, {2, 28}, {5, 1}}},
    {30, 5, 0, {{0, 1}, {1, 4}, {2, 5}}},
    {30, 5, 1, {{0, 1}, {1, 4}, {2, 5}, {6, 1}}},
    {30, 5, 2, {{0, 1}, {1, 4}, {2, 5}, {4, 1}}},
    {30, 5, 3, {{0, 1}, {1, 4}, {2, 5}, {6, 1}, {4, 1}}},
    {30, kNone, 0xFFFFFFFC, {{0, 1}, {1, 4}, {2, kNone}}},
    {33, 5, 0, {{0, 1}, {1, 5}, {2, 5}}},
    {33, 5, 1, {{0, 1}, {1, 5}, {2, 5}, {6, 1}}},
    {33, 5, 2, {{0, 1}, {1, 5}, {2, 5}}},
    {33, 0, 3, {{0, 1}, {1, 5}, {2, 0}, {6, 1}}},
    {33, kNone, 0, {{0, 1}}},
    {33, kNone, 3, {{0, 1}}},
    {33, kNone - 1, 0, {{0, 1}, {1, 5}, {2, kNone - 1}}},
    {40, 5, 9, {{25, 1}}},
    {41, 5, 9, {{25, 2}}},
    {43, 5, 9, {{10, 1}, {11, 0}, {12, 5}}},
    {53, 5, 9, {{13, 1}, {14, 9}}},
    {117, 0, 9, {{7, 1}, {8, 0}, {9, 9}}},
    {117, 1, 9, {{7, 1}, {8, 1}, {9, 9}}},
    {117, 0x80000000, 0, {{7, 1}, {8, 1}, {9, 0}}},
    {118, 5, 9, {{13, 1}, {14, 5}}},
    {123, 5, 9, {{15, 1}, {16, 0}, {17, 0}, {18, 5}}},
    {124, 5, 9, {{29, 1}, {30, 0}, {31, 5}}},
    {130, 5, 9, {{19, 1}, {20, 0}, {21, 0}, {22, 5}}},
    {134, 5, 9, {{29, 1}, {30, 1}, {31, 5}}},
    {324, 5, 9, {{0, 1}, {1, 6}, {2, 5}}},
};

class FieldAction : public swctl_test::LibraryTest {
 protected:
  static void expect_changes(const ActionCase &test, const Words &before) {
    SCOPED_TRACE("action " + std::to_string(test.action) + " with " + std::to_string(test.param0) +
                 ", " + std::to_string(test.param1));
    chip_action action = {};
    std::copy(before.begin(), before.end(), action.word);
    ASSERT_EQ(rtk_acl_ruleAction_set(kUnit, 0, kRule, &action), 0);
    EXPECT_EQ(add(test.action, test.param0, test.param1), 0);
    EXPECT_EQ(chip_words(), with(before, test.changes));
  }
  using chip_action = chip_acl_action;
};

TEST_F(FieldAction, SetsItsWordsOfAnEmptyRecord) {
  for (const ActionCase &test : kActionCases) expect_changes(test, Words(CHIP_ACL_ACTION_WORDS, 0));
}

TEST_F(FieldAction, LeavesEveryOtherWordAsRead) {
  Words before;
  for (uint32_t word = 0; word < CHIP_ACL_ACTION_WORDS; ++word) before.push_back(1000 + word);
  for (const ActionCase &test : kActionCases) expect_changes(test, before);
}

TEST_F(FieldAction, AnyOtherActionWritesTheRecordBackUnchanged) {
  Words before;
  for (uint32_t word = 0; word < CHIP_ACL_ACTION_WORDS; ++word) before.push_back(7 * word);
  for (uint32_t action = 0; action < 400; ++action) {
    const auto is = [&](const ActionCase &test) { return test.action == action; };
    if (std::find_if(std::begin(kActionCases), std::end(kActionCases), is) !=
        std::end(kActionCases))
      continue;
    expect_changes({action, 5, 9, {}}, before);
  }
  expect_changes({0x10001, 5, 9, {}}, before);
  expect_changes({kNone, 5, 9, {}}, before);
}

TEST_F(FieldAction, ReadsAndWritesTheRuleOfTheUnit) {
  EXPECT_EQ(add(40, 0, 0, 0xFFFFFFFF), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].name, kGet);
  EXPECT_EQ(calls[1].name, kSet);
  for (const auto &call : calls) {
    EXPECT_EQ(call.in("unit"), 1);
    EXPECT_EQ(call.in("table"), 0);
    EXPECT_EQ(call.in("rule"), 7);
  }
  EXPECT_EQ(calls[1].in("action.word[25]"), 1);
  EXPECT_TRUE(vchip::acl_rules(0).empty());
}

TEST_F(FieldAction, ActionsAreMerged) {
  add(40, 0, 0);
  add(118, 3, 0);
  add(24, 1, 0);
  add(30, 4, 2);
  const Words expected = with(Words(CHIP_ACL_ACTION_WORDS, 0),
                              {{25, 1}, {13, 1}, {14, 3}, {0, 1}, {1, 4}, {2, 4}, {4, 1}, {5, 1}});
  EXPECT_EQ(chip_words(), expected) << "word 5 stays from the earlier action";
  add(53, 3, 8);
  add(41, 0, 0);
  EXPECT_EQ(chip_words(), with(expected, {{14, 8}, {25, 2}}));
}

TEST_F(FieldAction, TheRecordIsZeroBeforeItIsRead) {
  chip_answers(kGet, 0);
  EXPECT_EQ(add(41, 0, 0), 0);
  EXPECT_EQ(chip_words(), with(Words(CHIP_ACL_ACTION_WORDS, 0), {{25, 2}}));
}

TEST_F(FieldAction, StopsAtAnyReadResultButZero) {
  for (int32_t result : {-5, 9, INT32_MIN}) {
    swprobe::clear_plan();
    chip_answers(kGet, result);
    swprobe::forget();
    EXPECT_EQ(add(40, 0, 0), result);
    EXPECT_EQ(swprobe::take().size(), 1u);
    EXPECT_EQ(chip_words(), Words(CHIP_ACL_ACTION_WORDS, 0));
  }
}

TEST_F(FieldAction, HandsTheResultOfTheWriteOn) {
  for (int32_t result : {-5, 9, INT32_MIN}) {
    swprobe::clear_plan();
    chip_answers(kSet, result);
    EXPECT_EQ(add(40, 0, 0), result);
  }
}

TEST_F(FieldAction, LeavesTheParametersAlone) {
  const uint32_t param0 = 5;
  const uint32_t param1 = 9;
  user_field_action_add(0, kUnit, kRule, 30, &param0, &param1);
  EXPECT_EQ(param0, 5u);
  EXPECT_EQ(param1, 9u);
}

TEST_F(FieldAction, OneVariableMayBeBothParameters) {
  const uint32_t both = 3;
  EXPECT_EQ(user_field_action_add(0, kUnit, kRule, 30, &both, &both), 0);
  EXPECT_EQ(chip_words(),
            with(Words(CHIP_ACL_ACTION_WORDS, 0), {{0, 1}, {1, 4}, {2, 3}, {6, 1}, {4, 1}}));
}

TEST_F(FieldAction, PrintsNothing) {
  const auto refused = [] {
    const uint32_t zero = 0;
    EXPECT_EQ(user_field_action_add(0, VCHIP_UNITS, 0, 40, &zero, &zero), VCHIP_E_UNIT);
  };
  EXPECT_PRINTED(swctl_test::printed_by(refused), "", "");
}

}  // namespace
