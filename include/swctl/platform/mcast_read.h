/* SPDX-License-Identifier: MIT */
/**
 * @file mcast_read.h
 * @brief Reading the IP multicast table and how it is looked up. Optional;
 *        read.h has the rules.
 */
#ifndef SWCTL_PLATFORM_MCAST_READ_H
#define SWCTL_PLATFORM_MCAST_READ_H

#include <swctl/platform/mcast_records.h>
#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** An IPv4 multicast entry. */
struct swctl_platform_ip_mcast {
  int32_t index; /**< index in the table; -1 if there is no such entry */
  chip_ip_mcast_entry entry;
};
typedef struct swctl_platform_ip_mcast swctl_platform_ip_mcast;

/**
 * @brief Finds the first IPv4 multicast entry from an index on.
 *
 * @param unit  switch unit
 * @param from  index to begin at
 * @param entry receives the entry, as rtk_l2_ipMcastAddr_add() takes it
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_ip_mcast_next(uint32_t unit, int32_t from,
                                               swctl_platform_ip_mcast *entry);

/** An IPv6 multicast entry. */
struct swctl_platform_ip6_mcast {
  int32_t index; /**< index in the table; -1 if there is no such entry */
  chip_ip6_mcast_entry entry;
};
typedef struct swctl_platform_ip6_mcast swctl_platform_ip6_mcast;

/**
 * @brief Finds the first IPv6 multicast entry from an index on.
 *
 * @param unit  switch unit
 * @param from  index to begin at
 * @param entry receives the entry, as rtk_l2_ip6McastAddr_add() takes it
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_ip6_mcast_next(uint32_t unit, int32_t from,
                                                swctl_platform_ip6_mcast *entry);

/**
 * @brief Reads how IPv4 multicast frames are looked up.
 *
 * @param unit switch unit
 * @param mode receives the value last passed to rtk_l2_ipmcMode_set()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_ip_mcast_mode_get(uint32_t unit, uint32_t *mode);

/**
 * @brief Reads how IPv6 multicast frames are looked up.
 *
 * @param unit switch unit
 * @param mode receives the value last passed to rtk_l2_ip6mcMode_set()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_ip6_mcast_mode_get(uint32_t unit, uint32_t *mode);

/**
 * @brief Reads what becomes of frames of an ingress port that match no entry.
 *
 * @param unit   switch unit
 * @param port   chip port
 * @param type   one of CHIP_LOOKUP_*
 * @param action receives the value last passed to
 *               rtk_l2_portLookupMissAction_set()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_lookup_miss_get(uint32_t unit, int32_t port, uint32_t type,
                                                 uint32_t *action);

SWCTL_END_DECLS

#endif
