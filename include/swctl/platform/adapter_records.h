/* SPDX-License-Identifier: MIT */
/**
 * @file adapter_records.h
 * @brief Records of the platform adapter's calls.
 */
#ifndef SWCTL_PLATFORM_ADAPTER_RECORDS_H
#define SWCTL_PLATFORM_ADAPTER_RECORDS_H

#include <swctl/types.h>

/** Bytes of ::adp_fp_entity_rule_t that belong to the adapter alone. */
#define ADP_FP_RULE_AREA 6248

/**
 * @brief A rule of the adapter's, while it is put together.
 *
 * The caller clears the record and fills entity and index; the adapter's
 * add-qualifier and add-action calls write the area, whose layout is the
 * adapter's own.
 */
struct adp_fp_entity_rule_t {
  uint32_t entity; /**< what kind of rule it is */
  uint32_t reserved1;
  uint32_t index; /**< its place among the rules of its kind */
  uint32_t unset;
  uint32_t reserved2;
  uint8_t area[ADP_FP_RULE_AREA];
};
typedef struct adp_fp_entity_rule_t adp_fp_entity_rule_t;

#endif
