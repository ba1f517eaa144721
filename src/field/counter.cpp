// SPDX-License-Identifier: MIT
#include <swctl/field.h>
#include <swctl/platform/sdk.h>

int32_t user_field_clear_statistics(uint32_t, uint32_t unit, uint32_t counter, uint32_t kind) {
  if (kind == USER_FIELD_COUNT_PACKETS) return rtk_acl_statPktCnt_clear(unit, counter);
  return rtk_acl_statByteCnt_clear(unit, counter);
}

int32_t user_field_get_statistics(uint32_t, uint32_t unit, uint32_t counter, uint32_t kind,
                                  void *count) {
  auto *words = static_cast<uint32_t *>(count);
  if (kind == USER_FIELD_COUNT_PACKETS) return rtk_acl_statPktCnt_get(unit, counter, words);
  return rtk_acl_statByteCnt_get(unit, counter, words);
}
