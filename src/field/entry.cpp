// SPDX-License-Identifier: MIT
#include <swctl/field.h>
#include <swctl/platform/sdk.h>

#include "field/pair.h"
#include "field/report.h"
#include "field/write.h"

namespace {

constexpr uint8_t kWholeField = 0xFF;
constexpr int kPairLine = 2061;

}  // namespace

int32_t user_field_entry_install(uint32_t, uint32_t unit, int32_t rule) {
  return rtk_acl_ruleValidate_set(unit, CHIP_ACL_TABLE, rule, 1);
}

int32_t user_field_entry_destroy(uint32_t, uint32_t unit, int32_t rule) {
  const uint32_t number = static_cast<uint32_t>(rule);
  const chip_acl_range range = {number, number};
  return rtk_acl_rule_del(unit, CHIP_ACL_TABLE, &range);
}

int32_t user_field_set_select_tempate_idx(uint32_t, uint32_t unit, int32_t rule,
                                          uint32_t template_index) {
  return swctl::write_number(unit, rule, CHIP_ACL_FIELD_TEMPLATE,
                             static_cast<uint8_t>(template_index), kWholeField);
}

int32_t user_field_set_double_entry(uint32_t, uint32_t unit, int32_t rule) {
  const int32_t result = swctl::join_pair(unit, rule, swctl::PairMask::whole_field);
  if (result == 0) return 0;
  swctl::report_failed_call("user_field_set_double_entry", kPairLine, result);
  return result;
}

int32_t user_field_lookupMissAct_set(uint32_t, uint32_t unit, uint32_t target, uint32_t action) {
  const bool drop = action == USER_FIELD_MISS_ACTION;
  return rtk_acl_lookupMissAct_set(unit, target, drop ? CHIP_ACL_MISS_DROP : CHIP_ACL_MISS_FORWARD);
}
