// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/field.h>

#include "support/library_test.h"

namespace {

using FieldEntry = swctl_test::LibraryTest;
using swctl_test::chip_answers;

constexpr uint32_t kEntryUnit = 1;
constexpr int32_t kResults[] = {0, 3, -1, -1005, INT32_MIN, INT32_MAX};

TEST_F(FieldEntry, InstallMakesARuleValid) {
  EXPECT_EQ(user_field_entry_install(0xFFFFFFFF, kEntryUnit, 7), 0);
  EXPECT_EQ(user_field_entry_install(0, 0, 9), 0);
  EXPECT_CALLS("rtk_acl_ruleValidate_set(unit=1, table=0, rule=7, valid=1) = 0",
               "rtk_acl_ruleValidate_set(unit=0, table=0, rule=9, valid=1) = 0");
  EXPECT_TRUE(vchip::acl_rule(kEntryUnit, 7).valid);
  EXPECT_FALSE(vchip::acl_rule(kEntryUnit, 9).valid);
}

TEST_F(FieldEntry, DestroyDeletesExactlyTheRule) {
  for (int32_t rule : {6, 7, 8}) user_field_entry_install(0, kEntryUnit, rule);
  swprobe::forget();
  EXPECT_EQ(user_field_entry_destroy(0xFFFFFFFF, kEntryUnit, 7), 0);
  EXPECT_CALLS("rtk_acl_rule_del(unit=1, table=0, range.first=7, range.last=7) = 0");
  EXPECT_TRUE(vchip::acl_rule(kEntryUnit, 6).valid);
  EXPECT_FALSE(vchip::acl_rule(kEntryUnit, 7).used);
  EXPECT_TRUE(vchip::acl_rule(kEntryUnit, 8).valid);
}

TEST_F(FieldEntry, AnyRuleAndAnyResultGoThrough) {
  for (int32_t result : kResults) {
    swprobe::clear_plan();
    chip_answers("rtk_acl_ruleValidate_set", result);
    chip_answers("rtk_acl_rule_del", result);
    chip_answers("rtk_acl_lookupMissAct_set", result);
    chip_answers("rtk_acl_ruleEntryField_write", result);
    swprobe::forget();
    EXPECT_EQ(user_field_entry_install(0, 5, -3), result);
    EXPECT_EQ(user_field_entry_destroy(0, 5, -3), result);
    EXPECT_EQ(user_field_lookupMissAct_set(0, 5, 0x80000001, 40), result);
    EXPECT_EQ(user_field_set_select_tempate_idx(0, 5, -3, 1), result);
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 4u);
    EXPECT_EQ(calls[0].in("unit"), 5);
    EXPECT_EQ(calls[0].in("rule"), -3);
    EXPECT_EQ(calls[1].in("range.first"), 0xFFFFFFFD);
    EXPECT_EQ(calls[1].in("range.last"), 0xFFFFFFFD);
    EXPECT_EQ(calls[2].in("target"), 0x80000001);
    EXPECT_EQ(calls[3].in("rule"), -3);
  }
}

TEST_F(FieldEntry, TemplateIsTheLowByteUnderAFullMask) {
  EXPECT_EQ(user_field_set_select_tempate_idx(0, kEntryUnit, 7, 0x105), 0);
  EXPECT_EQ(user_field_set_select_tempate_idx(9, 0, 7, 6), 0);
  EXPECT_CALLS(
      "rtk_acl_ruleEntryField_write(unit=1, table=0, rule=7, field=0, data=[05], mask=[ff]) = 0",
      "rtk_acl_ruleEntryField_write(unit=0, table=0, rule=7, field=0, data=[06], mask=[ff]) = 0");
  EXPECT_EQ(vchip::acl_rule(kEntryUnit, 7).match.at(0).text, "template 5");
}

TEST_F(FieldEntry, DoubleEntryNumbersBothHalvesAndJoinsThem) {
  EXPECT_EQ(user_field_set_double_entry(0xFFFFFFFF, kEntryUnit, 300), 0);
  EXPECT_CALLS(
      "rtk_acl_ruleEntryField_write(unit=1, table=0, rule=300, field=0, data=[00], mask=[ff]) = 0",
      "rtk_acl_ruleEntryField_write(unit=1, table=0, rule=301, field=0, data=[01], mask=[ff]) = 0",
      "rtk_acl_ruleOperation_set(unit=1, table=0, rule=300, operation.word=[0 1 0]) = 0");
  EXPECT_TRUE(vchip::acl_rule(kEntryUnit, 300).joined);
  EXPECT_EQ(vchip::acl_rule(kEntryUnit, 301).match.at(0).text, "template 1");
}

TEST_F(FieldEntry, DoubleEntryReportsAnythingButZero) {
  for (int32_t result : {-5, 9, INT32_MIN}) {
    swprobe::clear_plan();
    chip_answers("rtk_acl_ruleOperation_set", result);
    int32_t answered = 0;
    const auto pair = [&] { answered = user_field_set_double_entry(0, kEntryUnit, 300); };
    EXPECT_PRINTED(swctl_test::printed_by(pair),
                   "user_field_set_double_entry:[02061] call api failed, ret=" +
                       std::to_string(result) + " \n",
                   "");
    EXPECT_EQ(answered, result);
  }
}

TEST_F(FieldEntry, DoubleEntryGoesOnAfterFailedFieldWrites) {
  chip_answers("rtk_acl_ruleEntryField_write", -5);
  const auto pair = [] { EXPECT_EQ(user_field_set_double_entry(0, kEntryUnit, 300), 0); };
  EXPECT_PRINTED(swctl_test::printed_by(pair), "", "");
  EXPECT_EQ(swprobe::take().size(), 3u);
  EXPECT_TRUE(vchip::acl_rule(kEntryUnit, 300).joined);
}

TEST_F(FieldEntry, OnlyMissAction40IsOne) {
  EXPECT_EQ(user_field_lookupMissAct_set(0xFFFFFFFF, 0, 3, 40), 0);
  EXPECT_EQ(vchip::acl_form(0).misses.at(3), 1u);
  for (uint32_t action : {41u, 0u, 1u, 39u, 0x128u, 0xFFFFFFFFu})
    EXPECT_EQ(user_field_lookupMissAct_set(0, kEntryUnit, 4, action), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 7u);
  EXPECT_EQ(calls[0].line(), "rtk_acl_lookupMissAct_set(unit=0, target=3, action=1) = 0");
  for (size_t i = 1; i < calls.size(); ++i)
    EXPECT_EQ(calls[i].line(), "rtk_acl_lookupMissAct_set(unit=1, target=4, action=0) = 0");
}

TEST_F(FieldEntry, PrintsNothingButForPairs) {
  const auto all = [] {
    user_field_entry_install(0, VCHIP_UNITS, 0);
    user_field_entry_destroy(0, VCHIP_UNITS, 0);
    user_field_set_select_tempate_idx(0, VCHIP_UNITS, 0, 0);
    user_field_lookupMissAct_set(0, VCHIP_UNITS, 0, 0);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
