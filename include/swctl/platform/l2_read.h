/* SPDX-License-Identifier: MIT */
/**
 * @file l2_read.h
 * @brief Reading the layer-2 table, with an end that is not a failure.
 *        Optional; the rules are in read.h.
 *
 * rtk_l2_nextValidAddr_get() and rtk_l2_nextValidMcastAddr_get() answer alike
 * where there is no further entry and where they fail. Tools ask these functions
 * which of the two it was.
 */
#ifndef SWCTL_PLATFORM_L2_READ_H
#define SWCTL_PLATFORM_L2_READ_H

#include <swctl/platform/l2_records.h>

SWCTL_BEGIN_DECLS

/** One unicast entry. */
struct swctl_platform_l2_address {
  int32_t index; /**< its place in the table; -1 if there is no such entry */
  chip_l2_ucast_entry entry;
};
typedef struct swctl_platform_l2_address swctl_platform_l2_address;

/**
 * @brief The first unicast entry from a place on.
 *
 * @param unit    switch unit
 * @param from    where to begin
 * @param address receives the entry, its place and order as those of
 *                rtk_l2_nextValidAddr_get(), static entries included
 * @return 0, or a result of the platform's own
 */
SWCTL_API int32_t swctl_platform_l2_next(uint32_t unit, int32_t from,
                                         swctl_platform_l2_address *address);

/** One multicast group. */
struct swctl_platform_l2_group {
  int32_t index; /**< its place in the table; -1 if there is no such group */
  chip_l2_mcast_entry entry;
};
typedef struct swctl_platform_l2_group swctl_platform_l2_group;

/**
 * @brief The first multicast group from a place on.
 *
 * @param unit  switch unit
 * @param from  where to begin
 * @param group receives the group, its place and order as those of
 *              rtk_l2_nextValidMcastAddr_get()
 * @return 0, or a result of the platform's own
 */
SWCTL_API int32_t swctl_platform_l2_mcast_next(uint32_t unit, int32_t from,
                                               swctl_platform_l2_group *group);

SWCTL_END_DECLS

#endif
