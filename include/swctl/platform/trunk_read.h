/* SPDX-License-Identifier: MIT */
/**
 * @file trunk_read.h
 * @brief Reading trunks. Optional; read.h has the rules.
 */
#ifndef SWCTL_PLATFORM_TRUNK_READ_H
#define SWCTL_PLATFORM_TRUNK_READ_H

#include <swctl/platform/trunk_records.h>
#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** A trunk. */
struct swctl_platform_trunk {
  int32_t index;    /**< number; -1 if there is no such trunk */
  uint32_t members; /**< bit p: chip port p */
};
typedef struct swctl_platform_trunk swctl_platform_trunk;

/**
 * @brief Finds the first trunk with members from a number on.
 *
 * @param unit  switch unit
 * @param from  number to begin at
 * @param trunk receives the trunk, as rtk_trunk_port_set() takes it
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_trunk_next(uint32_t unit, int32_t from,
                                            swctl_platform_trunk *trunk);

/**
 * @brief Reads which fields a distribution algorithm hashes.
 *
 * @param unit      switch unit
 * @param algorithm ::CHIP_TRUNK_ALGORITHM
 * @param fields    receives what rtk_trunk_distributionAlgorithmParam_set()
 *                  was given: an OR of CHIP_TRUNK_HASH_* and bits that
 *                  libswctl does not know
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_trunk_hash_get(uint32_t unit, uint32_t algorithm,
                                                uint32_t *fields);

SWCTL_END_DECLS

#endif
