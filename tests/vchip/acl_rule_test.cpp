// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/platform/field_read.h>
#include <swctl/platform/sdk.h>

#include <climits>
#include <cstring>
#include <gmock/gmock.h>
#include <stdexcept>

#include "private_chip.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Bytes = std::vector<uint8_t>;

constexpr int32_t kLast = VCHIP_ACL_RULES - 1;
constexpr int32_t kNoRules[] = {-1, VCHIP_ACL_RULES, INT_MIN, INT_MAX};

class AclRules : public vchip_test::PrivateChip {
 protected:
  static int32_t write(int32_t rule, uint32_t field, const Bytes &data, const Bytes &mask) {
    return rtk_acl_ruleEntryField_write(1, 0, rule, field, data.data(), mask.data());
  }
  static void validate(int32_t rule) { ASSERT_EQ(rtk_acl_ruleValidate_set(1, 0, rule, 1), 0); }
  static std::string dump() { return vchip::dump_json(-1); }
};

TEST_F(AclRules, ThereAreNoneAfterPowerOn) {
  for (uint32_t unit : {0u, 1u}) {
    EXPECT_THAT(vchip::acl_rules(unit), IsEmpty());
    const vchip::AclFormView form = vchip::acl_form(unit);
    EXPECT_THAT(form.templates, SizeIs(8));
    EXPECT_THAT(form.templates, Each(std::vector<uint32_t>(12, 0)));
    EXPECT_THAT(form.selectors, SizeIs(12));
    EXPECT_THAT(form.selectors, Each(std::vector<uint32_t>(3, 0)));
    EXPECT_THAT(form.misses, SizeIs(VCHIP_PORTS));
    EXPECT_THAT(form.misses, Each(0u));
  }
}

TEST_F(AclRules, FieldsAreKeptAtTheirWidth) {
  for (uint32_t id = 0; id < CHIP_ACL_FIELD_IDS; ++id) {
    const uint32_t width = chip_acl_field_bytes(id);
    if (width == 0) continue;
    // Arrays of just that size: a byte read past them is an error.
    Bytes data(width), mask(width);
    for (uint32_t i = 0; i < width; ++i) {
      data[i] = static_cast<uint8_t>(width == 1 ? 2 : i + 1);
      mask[i] = static_cast<uint8_t>(0xF0 | i);
    }
    ASSERT_EQ(vchip_reset(), 0);
    ASSERT_EQ(write(kLast, id, data, mask), 0) << id;
    const vchip::AclRuleView rule = vchip::acl_rule(1, kLast);
    ASSERT_EQ(rule.match.size(), 1u) << id;
    EXPECT_EQ(rule.match[0].field, id);
    EXPECT_EQ(rule.match[0].data, data);
    EXPECT_EQ(rule.match[0].mask, mask);
    EXPECT_THAT(vchip::acl_rules(1), SizeIs(1));
    EXPECT_THAT(vchip::acl_rules(0), IsEmpty());
  }
}

TEST_F(AclRules, WidthsOfFields) {
  const struct {
    uint32_t field, bytes;
  } kWidths[] = {{0, 1},  {1, 0},   {2, 1},   {6, 4},  {7, 6},  {8, 6},  {11, 1}, {12, 2},
                 {13, 1}, {15, 2},  {17, 1},  {19, 2}, {20, 1}, {22, 2}, {41, 2}, {42, 4},
                 {43, 4}, {44, 16}, {45, 16}, {46, 1}, {52, 2}, {53, 2}, {54, 0}, {UINT32_MAX, 0}};
  for (const auto &test : kWidths) EXPECT_EQ(chip_acl_field_bytes(test.field), test.bytes);
}

TEST_F(AclRules, FieldsThatDoNotExist) {
  const std::string before = dump();
  const Bytes bytes(16, 0);
  for (uint32_t field : {1u, 3u, 14u, 54u, UINT32_MAX})
    EXPECT_EQ(write(7, field, bytes, bytes), VCHIP_E_FIELD) << field;
  EXPECT_EQ(dump(), before);
}

TEST_F(AclRules, CodedFieldsHaveALimit) {
  const struct {
    uint32_t field;
    uint8_t limit;
  } kCases[] = {{CHIP_ACL_FIELD_TEMPLATE, 7},       {CHIP_ACL_FIELD_FRAME_TYPE, 2},
                {CHIP_ACL_FIELD_OUTER_PRIORITY, 7}, {CHIP_ACL_FIELD_INNER_PRIORITY, 7},
                {CHIP_ACL_FIELD_IP_TYPE, 15},       {CHIP_ACL_FIELD_TRAFFIC_CLASS, 255}};
  for (const auto &test : kCases) {
    EXPECT_EQ(write(7, test.field, {test.limit}, {0xFF}), 0);
    if (test.limit == 255) continue;
    const auto above = static_cast<uint8_t>(test.limit + 1);
    EXPECT_EQ(write(7, test.field, {above}, {0xFF}), VCHIP_E_VALUE) << test.field;
  }
}

TEST_F(AclRules, RulesThatDoNotExist) {
  const std::string before = dump();
  const uint8_t byte = 0;
  const chip_acl_operation alone = {{0, 0, 0}};
  for (int32_t rule : kNoRules) {
    chip_acl_action action;
    memset(&action, 0x5A, sizeof action);
    const chip_acl_action untouched = action;
    EXPECT_EQ(rtk_acl_ruleEntryField_write(1, 0, rule, 0, &byte, &byte), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_acl_ruleValidate_set(1, 0, rule, 1), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_acl_ruleOperation_set(1, 0, rule, &alone), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_acl_ruleAction_get(1, 0, rule, &action), VCHIP_E_INDEX);
    EXPECT_EQ(memcmp(&action, &untouched, sizeof action), 0);
    EXPECT_EQ(rtk_acl_ruleAction_set(1, 0, rule, &action), VCHIP_E_INDEX);
    EXPECT_THROW(vchip::acl_rule(1, rule), std::out_of_range);
  }
  EXPECT_EQ(dump(), before);
}

TEST_F(AclRules, ThereIsOneTable) {
  const std::string before = dump();
  const uint8_t byte = 0;
  const chip_acl_operation alone = {{0, 0, 0}};
  const chip_acl_range range = {0, 0};
  chip_acl_action action = {};
  for (uint32_t table : {1u, UINT32_MAX}) {
    EXPECT_EQ(rtk_acl_ruleEntryField_write(1, table, 7, 0, &byte, &byte), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_acl_ruleValidate_set(1, table, 7, 1), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_acl_ruleOperation_set(1, table, 7, &alone), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_acl_rule_del(1, table, &range), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_acl_ruleAction_get(1, table, 7, &action), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_acl_ruleAction_set(1, table, 7, &action), VCHIP_E_INDEX);
  }
  EXPECT_EQ(dump(), before);
}

TEST_F(AclRules, JoinedRulesNeedAPartner) {
  const chip_acl_operation join = {{0, 1, 0}};
  const chip_acl_operation alone = {{0, 0, 0}};
  EXPECT_EQ(rtk_acl_ruleOperation_set(1, 0, kLast, &join), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_acl_ruleOperation_set(1, 0, kLast, &alone), 0);
  EXPECT_EQ(rtk_acl_ruleOperation_set(1, 0, kLast - 1, &join), 0);
  EXPECT_TRUE(vchip::acl_rule(1, kLast - 1).joined);
  EXPECT_FALSE(vchip::acl_rule(1, kLast).joined);
  EXPECT_EQ(rtk_acl_ruleOperation_set(1, 0, kLast - 1, &alone), 0);
  EXPECT_FALSE(vchip::acl_rule(1, kLast - 1).joined);
  for (const chip_acl_operation &bad :
       {chip_acl_operation{{1, 1, 0}}, chip_acl_operation{{0, 2, 0}}, chip_acl_operation{{0, 1, 1}},
        chip_acl_operation{{0, 0, UINT32_MAX}}})
    EXPECT_EQ(rtk_acl_ruleOperation_set(1, 0, 6, &bad), VCHIP_E_VALUE);
}

TEST_F(AclRules, ValidityIsAFlag) {
  validate(7);
  EXPECT_TRUE(vchip::acl_rule(1, 7).valid);
  EXPECT_EQ(rtk_acl_ruleValidate_set(1, 0, 7, 2), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_acl_ruleValidate_set(1, 0, 7, 0), 0);
  EXPECT_FALSE(vchip::acl_rule(1, 7).used);
}

TEST_F(AclRules, DeletingLeavesTheFormOfTheTable) {
  const chip_acl_operation join = {{0, 1, 0}};
  chip_acl_action action = {};
  action.word[25] = 1;
  ASSERT_EQ(write(7, CHIP_ACL_FIELD_TEMPLATE, {1}, {3}), 0);
  ASSERT_EQ(write(7, CHIP_ACL_FIELD_ETHER_TYPE, {8, 0}, {0xFF, 0xFF}), 0);
  ASSERT_EQ(rtk_acl_ruleOperation_set(1, 0, 7, &join), 0);
  ASSERT_EQ(rtk_acl_ruleAction_set(1, 0, 7, &action), 0);
  validate(7);
  const chip_acl_range range = {7, 7};
  EXPECT_EQ(rtk_acl_rule_del(1, 0, &range), 0);
  const vchip::AclRuleView rule = vchip::acl_rule(1, 7);
  EXPECT_FALSE(rule.valid);
  EXPECT_TRUE(rule.joined);
  ASSERT_THAT(rule.match, SizeIs(1));
  EXPECT_EQ(rule.match[0].text, "template 1 mask 0x3");
  EXPECT_THAT(rule.action, Each(0u));
  ASSERT_EQ(rtk_acl_ruleAction_get(1, 0, 7, &action), 0);
  EXPECT_EQ(action.word[25], 0u);
}

TEST_F(AclRules, DeletesRangesWithBothEnds) {
  for (int32_t rule : {5, 6, 7, 8, kLast}) validate(rule);
  chip_acl_range range = {6, 7};
  EXPECT_EQ(rtk_acl_rule_del(1, 0, &range), 0);
  range = {kLast, kLast};
  EXPECT_EQ(rtk_acl_rule_del(1, 0, &range), 0);
  std::vector<int32_t> left;
  for (const vchip::AclRuleView &rule : vchip::acl_rules(1)) left.push_back(rule.rule);
  EXPECT_THAT(left, ElementsAre(5, 8));
  for (const chip_acl_range &bad :
       {chip_acl_range{VCHIP_ACL_RULES, VCHIP_ACL_RULES}, chip_acl_range{5, VCHIP_ACL_RULES},
        chip_acl_range{5, UINT32_MAX}})
    EXPECT_EQ(rtk_acl_rule_del(1, 0, &bad), VCHIP_E_INDEX);
  range = {8, 5};
  EXPECT_EQ(rtk_acl_rule_del(1, 0, &range), VCHIP_E_VALUE);
  EXPECT_THAT(vchip::acl_rules(1), SizeIs(2));
}

TEST_F(AclRules, ActionRecordsAreKeptWordForWord) {
  chip_acl_action action;
  for (uint32_t word = 0; word < CHIP_ACL_ACTION_WORDS; ++word) action.word[word] = ~word;
  ASSERT_EQ(rtk_acl_ruleAction_set(1, 0, kLast, &action), 0);
  chip_acl_action read = {};
  ASSERT_EQ(rtk_acl_ruleAction_get(1, 0, kLast, &read), 0);
  EXPECT_EQ(memcmp(&read, &action, sizeof read), 0);
  ASSERT_EQ(rtk_acl_ruleAction_get(0, 0, kLast, &read), 0);
  EXPECT_THAT(read.word, Each(0u));
}

TEST_F(AclRules, TemplatesAndSelectors) {
  uint32_t codes[12] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 63};
  EXPECT_EQ(rtk_acl_template_set(1, 7, codes), 0);
  EXPECT_EQ(vchip::acl_form(1).templates.at(7), std::vector<uint32_t>(codes, codes + 12));
  EXPECT_EQ(rtk_acl_template_set(1, 8, codes), VCHIP_E_INDEX);
  codes[11] = 64;
  EXPECT_EQ(rtk_acl_template_set(1, 7, codes), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_acl_templateSelector_set(1, 11, 7, 3, 1), 0);
  EXPECT_THAT(vchip::acl_form(1).selectors.at(11), ElementsAre(7, 3, 1));
  EXPECT_EQ(rtk_acl_templateSelector_set(1, 12, 0, 0, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_acl_templateSelector_set(1, 0, 8, 0, 0), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_acl_templateSelector_set(1, 0, 0, 0, 8), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_acl_templateSelector_set(1, 0, 0, 8, 0), VCHIP_E_VALUE);
  EXPECT_THAT(vchip::acl_form(1).selectors.at(0), Each(0u));
}

TEST_F(AclRules, MissActionsAreZeroOrOne) {
  EXPECT_EQ(rtk_acl_lookupMissAct_set(1, VCHIP_CPU_PORT, 1), 0);
  EXPECT_EQ(vchip::acl_form(1).misses.at(VCHIP_CPU_PORT), 1u);
  EXPECT_EQ(rtk_acl_lookupMissAct_set(1, VCHIP_CPU_PORT, 2), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_acl_lookupMissAct_set(1, VCHIP_CPU_PORT, 0), 0);
  EXPECT_THAT(vchip::acl_form(1).misses, Each(0u));
}

TEST_F(AclRules, ViewsOfWhatIsNotThereThrow) {
  EXPECT_THROW(vchip::acl_rule(VCHIP_UNITS, 0), std::out_of_range);
  EXPECT_THROW(vchip::acl_rules(VCHIP_UNITS), std::out_of_range);
  EXPECT_THROW(vchip::acl_form(VCHIP_UNITS), std::out_of_range);
  EXPECT_EQ(vchip_reset(), 0) << "a view that throws lets go of the chip";
}

// The platform's own reading, for tools.
TEST_F(AclRules, ToolsReadRulesOneByOne) {
  chip_acl_action action = {};
  action.word[13] = 1;
  ASSERT_EQ(write(9, CHIP_ACL_FIELD_DST_MAC, {1, 2, 3, 4, 5, 6}, Bytes(6, 0xF0)), 0);
  ASSERT_EQ(rtk_acl_ruleAction_set(1, 0, 9, &action), 0);
  validate(kLast);
  swctl_platform_acl_rule rule;
  ASSERT_EQ(swctl_platform_acl_rule_next(1, 0, &rule), 0);
  EXPECT_EQ(rule.index, 9);
  EXPECT_EQ(rule.valid, 0u);
  EXPECT_EQ(rule.action.word[13], 1u);
  EXPECT_EQ(Bytes(rule.data[7], rule.data[7] + 6), (Bytes{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(Bytes(rule.mask[7], rule.mask[7] + 6), Bytes(6, 0xF0));
  for (uint32_t field = 0; field < CHIP_ACL_FIELD_IDS; ++field)
    EXPECT_EQ(rule.written[field], field == 7 ? 1 : 0);
  ASSERT_EQ(swctl_platform_acl_rule_next(1, 10, &rule), 0);
  EXPECT_EQ(rule.index, kLast);
  EXPECT_EQ(rule.valid, 1u);
  ASSERT_EQ(swctl_platform_acl_rule_next(1, kLast + 1, &rule), 0);
  EXPECT_EQ(rule.index, -1);
  ASSERT_EQ(swctl_platform_acl_rule_next(0, 0, &rule), 0);
  EXPECT_EQ(rule.index, -1) << "the other unit";
  EXPECT_EQ(swctl_platform_acl_rule_next(VCHIP_UNITS, 0, &rule), VCHIP_E_UNIT);
  EXPECT_EQ(swctl_platform_acl_rule_next(1, -1, &rule), VCHIP_E_INDEX);
  EXPECT_EQ(swctl_platform_acl_rule_next(1, 0, nullptr), VCHIP_E_NULL);
}

}  // namespace
