/* SPDX-License-Identifier: MIT */
/**
 * @file field_read.h
 * @brief Reading the rules of the field processor. Optional; read.h has the
 *        rules.
 */
#ifndef SWCTL_PLATFORM_FIELD_READ_H
#define SWCTL_PLATFORM_FIELD_READ_H

#include <swctl/platform/field_records.h>

SWCTL_BEGIN_DECLS

/** A rule as the chip has it. */
struct swctl_platform_acl_rule {
  int32_t index;   /**< index; -1 if there is no such rule */
  uint32_t valid;  /**< non-zero: is matched */
  uint32_t joined; /**< non-zero: forms a double entry with the next rule */
  chip_acl_action action;
  uint8_t written[CHIP_ACL_FIELD_IDS]; /**< by field ID: non-zero if data and mask were written */
  uint8_t data[CHIP_ACL_FIELD_IDS][CHIP_ACL_FIELD_MAX_BYTES];
  uint8_t mask[CHIP_ACL_FIELD_IDS][CHIP_ACL_FIELD_MAX_BYTES];
};
typedef struct swctl_platform_acl_rule swctl_platform_acl_rule;

/**
 * @brief Finds the first rule from an index on that is not empty.
 *
 * A rule is not empty if it is valid or joined, or if a match field or an
 * action of it was written.
 *
 * @param unit switch unit
 * @param from index to begin at
 * @param rule receives the rule
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_acl_rule_next(uint32_t unit, int32_t from,
                                               swctl_platform_acl_rule *rule);

/**
 * @brief Reads what becomes of frames of an ingress port that match no rule.
 *
 * @param unit   switch unit
 * @param target chip port
 * @param action receives the value last passed to rtk_acl_lookupMissAct_set()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_acl_miss_get(uint32_t unit, uint32_t target, uint32_t *action);

SWCTL_END_DECLS

#endif
