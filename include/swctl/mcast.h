/* SPDX-License-Identifier: MIT */
/**
 * @file mcast.h
 * @brief Multicast: layer-2 groups, IP entries and lookup-miss modes.
 *
 * The rules in frame.h apply.
 */
#ifndef SWCTL_MCAST_H
#define SWCTL_MCAST_H

#include <swctl/mcast_ip.h>
#include <swctl/mcast_l2.h>
#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0. The
 * sentence says what the call is for on a device that offers it.
 * @{
 */
/** Prepares IGMP snooping. */
SWCTL_API int32_t user_igmp_snooping_init(uint32_t lead, ...);
/** Switches IGMP snooping (RFC 4541) on or off. */
SWCTL_API int32_t user_igmp_snooping_enable_set(uint32_t lead, ...);
/** Whether IGMP snooping is on. */
SWCTL_API int32_t user_igmp_snooping_enable_get(uint32_t lead, ...);
/** Empties the layer-2 multicast table. */
SWCTL_API int32_t User_mcast_init(uint32_t lead, ...);
/** Switches the lookup of layer-2 multicast groups on a port on or off. */
SWCTL_API int32_t User_switch_port_control_l2mc_enable(uint32_t lead, ...);
/** Whether a port looks up layer-2 multicast groups. */
SWCTL_API int32_t User_switch_port_control_l2mc_get(uint32_t lead, ...);
/** Whether a port looks up IP multicast groups. */
SWCTL_API int32_t User_switch_port_control_ipmc_get(uint32_t lead, ...);
/** Switches the lookup of IP multicast groups on a port on or off. */
SWCTL_API int32_t User_switch_port_control_ipmc_set(uint32_t lead, ...);
/** Lets a port join a multicast group. */
SWCTL_API int32_t User_mcast_join(uint32_t lead, ...);
/** Lets a port leave a multicast group. */
SWCTL_API int32_t User_mcast_leave(uint32_t lead, ...);
/** The number of port bitmaps that groups can share. */
SWCTL_API int32_t User_mcast_bitmap_max_get(uint32_t lead, ...);
/** Writes a shared port bitmap. */
SWCTL_API int32_t User_mcast_bitmap_set(uint32_t lead, ...);
/** Reads a shared port bitmap. */
SWCTL_API int32_t User_mcast_bitmap_get(uint32_t lead, ...);
/** Frees a shared port bitmap. */
SWCTL_API int32_t User_mcast_bitmap_del(uint32_t lead, ...);
/** Adds a group that uses the shared port bitmap of an index. */
SWCTL_API int32_t User_mcast_addr_add_w_l2mcindex(uint32_t lead, ...);
/** @} */

/**
 * @name Fixed result -1
 * Not supported: each ignores its arguments, calls nothing, writes nothing and
 * returns -1. The sentence says what the call is for on a device that offers
 * it.
 * @{
 */
/** Sets the ports of an IPv6 multicast group (source, group, VLAN, port bitmap). */
SWCTL_API int32_t User_ip6_mcast_set(uint32_t lead, ...);
/** @} */

SWCTL_END_DECLS

#endif
