/* SPDX-License-Identifier: MIT */
/**
 * @file mcast_read.h
 * @brief Reading the IP multicast table and how it is looked up. Optional; the
 *        laws are in read.h.
 */
#ifndef SWCTL_PLATFORM_MCAST_READ_H
#define SWCTL_PLATFORM_MCAST_READ_H

#include <swctl/platform/mcast_records.h>
#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** One IPv4 entry. */
struct swctl_platform_ip_mcast {
  int32_t index; /**< its place in the table; -1 if there is no such entry */
  chip_ip_mcast_entry entry;
};
typedef struct swctl_platform_ip_mcast swctl_platform_ip_mcast;

/**
 * @brief The first IPv4 multicast entry from a place on.
 *
 * @param unit  switch unit
 * @param from  where to begin
 * @param entry receives the entry, as rtk_l2_ipMcastAddr_add() takes it
 * @return 0, or a result of the platform's own
 */
SWCTL_API int32_t swctl_platform_ip_mcast_next(uint32_t unit, int32_t from,
                                               swctl_platform_ip_mcast *entry);

/** One IPv6 entry. */
struct swctl_platform_ip6_mcast {
  int32_t index; /**< its place in the table; -1 if there is no such entry */
  chip_ip6_mcast_entry entry;
};
typedef struct swctl_platform_ip6_mcast swctl_platform_ip6_mcast;

/**
 * @brief The first IPv6 multicast entry from a place on.
 *
 * @param unit  switch unit
 * @param from  where to begin
 * @param entry receives the entry, as rtk_l2_ip6McastAddr_add() takes it
 * @return 0, or a result of the platform's own
 */
SWCTL_API int32_t swctl_platform_ip6_mcast_next(uint32_t unit, int32_t from,
                                                swctl_platform_ip6_mcast *entry);

/**
 * @brief How IPv4 multicast frames are looked up.
 *
 * @param unit switch unit
 * @param mode receives what rtk_l2_ipmcMode_set() was given
 * @return 0, or a result of the platform's own
 */
SWCTL_API int32_t swctl_platform_ip_mcast_mode_get(uint32_t unit, uint32_t *mode);

/**
 * @brief How IPv6 multicast frames are looked up.
 *
 * @param unit switch unit
 * @param mode receives what rtk_l2_ip6mcMode_set() was given
 * @return 0, or a result of the platform's own
 */
SWCTL_API int32_t swctl_platform_ip6_mcast_mode_get(uint32_t unit, uint32_t *mode);

/**
 * @brief What becomes of frames that come into a port and are not found.
 *
 * @param unit   switch unit
 * @param port   chip port
 * @param type   one of CHIP_LOOKUP_*
 * @param action receives what rtk_l2_portLookupMissAction_set() was given
 * @return 0, or a result of the platform's own
 */
SWCTL_API int32_t swctl_platform_lookup_miss_get(uint32_t unit, int32_t port, uint32_t type,
                                                 uint32_t *action);

SWCTL_END_DECLS

#endif
