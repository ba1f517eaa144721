/* SPDX-License-Identifier: MIT */
/**
 * @file field_read.h
 * @brief Reading the rules of the field processor. Optional; the laws are in
 *        read.h.
 */
#ifndef SWCTL_PLATFORM_FIELD_READ_H
#define SWCTL_PLATFORM_FIELD_READ_H

#include <swctl/platform/field_records.h>

SWCTL_BEGIN_DECLS

/** One rule as the chip has it. */
struct swctl_platform_acl_rule {
  int32_t index;   /**< its index; -1 if there is no such rule */
  uint32_t valid;  /**< takes part in matching */
  uint32_t joined; /**< is one entry together with the next rule */
  chip_acl_action action;
  uint8_t written[CHIP_ACL_FIELD_IDS]; /**< by field id: has data and mask */
  uint8_t data[CHIP_ACL_FIELD_IDS][CHIP_ACL_FIELD_MAX_BYTES];
  uint8_t mask[CHIP_ACL_FIELD_IDS][CHIP_ACL_FIELD_MAX_BYTES];
};
typedef struct swctl_platform_acl_rule swctl_platform_acl_rule;

/**
 * @brief The first rule from an index on that holds anything.
 *
 * A rule holds something if it is valid or joined, if a match field of it was
 * written or an action set.
 *
 * @param unit switch unit
 * @param from where to begin
 * @param rule receives the rule
 * @return 0, or a result of the platform's own
 */
SWCTL_API int32_t swctl_platform_acl_rule_next(uint32_t unit, int32_t from,
                                               swctl_platform_acl_rule *rule);

/**
 * @brief What becomes of frames that come into a port and match no rule.
 *
 * @param unit   switch unit
 * @param target chip port
 * @param action receives what rtk_acl_lookupMissAct_set() was given
 * @return 0, or a result of the platform's own
 */
SWCTL_API int32_t swctl_platform_acl_miss_get(uint32_t unit, uint32_t target, uint32_t *action);

SWCTL_END_DECLS

#endif
