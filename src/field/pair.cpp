// SPDX-License-Identifier: MIT
#include "field/pair.h"

#include <swctl/platform/sdk.h>

#include "field/write.h"

namespace swctl {
namespace {

constexpr chip_acl_operation kJoinWithNext = {{0, 1, 0}};
// Whole areas, made before any call: hundreds of pairs are written at a time.
constexpr uint8_t kFirstHalf[kFieldAreaSize] = {0};
constexpr uint8_t kSecondHalf[kFieldAreaSize] = {1};
constexpr uint8_t kHalfBits[kFieldAreaSize] = {3};
constexpr uint8_t kWholeField[kFieldAreaSize] = {0xFF};

// The number after the largest one is the smallest one.
int32_t rule_after(int32_t rule) {
  return static_cast<int32_t>(static_cast<uint32_t>(rule) + 1);
}

void write_half(uint32_t unit, int32_t rule, const uint8_t *half, const uint8_t *mask) {
  rtk_acl_ruleEntryField_write(unit, CHIP_ACL_TABLE, rule, CHIP_ACL_FIELD_TEMPLATE, half, mask);
}

}  // namespace

int32_t join_pair(uint32_t unit, int32_t rule, PairMask mask) {
  const uint8_t *mask_area = mask == PairMask::half_bits ? kHalfBits : kWholeField;
  write_half(unit, rule, kFirstHalf, mask_area);
  write_half(unit, rule_after(rule), kSecondHalf, mask_area);
  return rtk_acl_ruleOperation_set(unit, CHIP_ACL_TABLE, rule, &kJoinWithNext);
}

}  // namespace swctl
