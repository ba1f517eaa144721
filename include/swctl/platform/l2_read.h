/* SPDX-License-Identifier: MIT */
/**
 * @file l2_read.h
 * @brief Reading the layer-2 table to its end. Optional; read.h has the rules.
 *
 * The results of rtk_l2_nextValidAddr_get() and
 * rtk_l2_nextValidMcastAddr_get() do not tell the end of the table from a
 * failure; those of the functions here do.
 */
#ifndef SWCTL_PLATFORM_L2_READ_H
#define SWCTL_PLATFORM_L2_READ_H

#include <swctl/platform/l2_records.h>

SWCTL_BEGIN_DECLS

/** A unicast entry. */
struct swctl_platform_l2_address {
  int32_t index; /**< index in the table; -1 if there is no such entry */
  chip_l2_ucast_entry entry;
};
typedef struct swctl_platform_l2_address swctl_platform_l2_address;

/**
 * @brief Finds the first unicast entry from an index on.
 *
 * @param unit    switch unit
 * @param from    index to begin at
 * @param address receives the entry, static ones too, with index and order as
 *                in rtk_l2_nextValidAddr_get()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_l2_next(uint32_t unit, int32_t from,
                                         swctl_platform_l2_address *address);

/** A multicast group. */
struct swctl_platform_l2_group {
  int32_t index; /**< index in the table; -1 if there is no such group */
  chip_l2_mcast_entry entry;
};
typedef struct swctl_platform_l2_group swctl_platform_l2_group;

/**
 * @brief Finds the first multicast group from an index on.
 *
 * @param unit  switch unit
 * @param from  index to begin at
 * @param group receives the group, with index and order as in
 *              rtk_l2_nextValidMcastAddr_get()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_l2_mcast_next(uint32_t unit, int32_t from,
                                               swctl_platform_l2_group *group);

SWCTL_END_DECLS

#endif
