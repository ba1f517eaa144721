/* SPDX-License-Identifier: MIT */
/**
 * @file stp.h
 * @brief Spanning tree and protocol frame trapping.
 *
 * The laws in frame.h hold throughout.
 */
#ifndef SWCTL_STP_H
#define SWCTL_STP_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0.
 * The sentence says what the call is for on a device that offers it.
 * @{
 */
/** Destroys every spanning-tree group but the default one. */
SWCTL_API int32_t user_stg_clear(uint32_t lead, ...);
/** The group that new VLANs belong to. */
SWCTL_API int32_t user_stg_default_get(uint32_t lead, ...);
/** Chooses the group that new VLANs belong to. */
SWCTL_API int32_t user_stg_default_set(uint32_t lead, ...);
/** Takes every VLAN out of a group. */
SWCTL_API int32_t user_stg_vlan_remove_all(uint32_t lead, ...);
/** Makes a group and chooses its number. */
SWCTL_API int32_t user_stg_create(uint32_t lead, ...);
/** The number of groups that the chip can hold. */
SWCTL_API int32_t user_stg_max_support_count_get(uint32_t lead, ...);
/** The number of VLANs in a group. */
SWCTL_API int32_t user_stg_vlan_count_get(uint32_t lead, ...);
/** The groups, a part of them at a time. */
SWCTL_API int32_t user_stg_each_time_list(uint32_t lead, ...);
/** Frees a list of a group's VLANs. */
SWCTL_API int32_t user_stg_vlan_list_destroy(uint32_t lead, ...);
/** Frees a list of groups. */
SWCTL_API int32_t user_stg_list_destroy(uint32_t lead, ...);
/** The number of addresses whose frames count as protocol frames. */
SWCTL_API int32_t user_l2_bpdu_count(uint32_t lead, ...);
/** Lets protocol frames pass through a port. */
SWCTL_API int32_t user_l2_bpdu_through_set(uint32_t lead, ...);
/** Whether protocol frames pass through a port. */
SWCTL_API int32_t user_l2_bpdu_through_get(uint32_t lead, ...);
/** @} */

SWCTL_END_DECLS

#endif
