// SPDX-License-Identifier: MIT
#include <swctl/field.h>
#include <swctl/platform/sdk.h>

#include "field/action_words.h"

int32_t user_field_action_add(uint32_t, uint32_t unit, int32_t rule, uint32_t action,
                              const uint32_t *param0, const uint32_t *param1) {
  const uint32_t first = *param0;
  const uint32_t second = *param1;
  chip_acl_action record = {};
  const int32_t result = rtk_acl_ruleAction_get(unit, CHIP_ACL_TABLE, rule, &record);
  if (result != 0) return result;
  swctl::merge_action(record, action, first, second);
  return rtk_acl_ruleAction_set(unit, CHIP_ACL_TABLE, rule, &record);
}
