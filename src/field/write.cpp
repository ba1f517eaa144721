// SPDX-License-Identifier: MIT
#include "field/write.h"

#include <swctl/platform/sdk.h>

#include <cstring>

namespace swctl {

int32_t write_field(uint32_t unit, int32_t rule, uint32_t field, const void *value,
                    const void *mask, size_t size) {
  uint8_t data_area[kFieldAreaSize] = {};
  uint8_t mask_area[kFieldAreaSize] = {};
  memcpy(data_area, value, size);
  memcpy(mask_area, mask, size);
  return rtk_acl_ruleEntryField_write(unit, CHIP_ACL_TABLE, rule, field, data_area, mask_area);
}

}  // namespace swctl
