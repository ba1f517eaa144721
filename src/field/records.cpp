// SPDX-License-Identifier: MIT
// The SDK reads and writes these records by layout alone.
#include <swctl/platform/field_records.h>

#include <cstddef>

static_assert(sizeof(chip_acl_operation) == 12);
static_assert(sizeof(chip_acl_range) == 8);
static_assert(offsetof(chip_acl_range, first) == 0 && offsetof(chip_acl_range, last) == 4);
static_assert(sizeof(chip_acl_action) == 172);
static_assert(sizeof(chip_acl_meter) == 12);
static_assert(offsetof(chip_acl_meter, enable) == 0 && offsetof(chip_acl_meter, rate) == 4 &&
              offsetof(chip_acl_meter, burst_slot) == 8);
static_assert(sizeof(chip_acl_burst) == 8);
