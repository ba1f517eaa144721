/* SPDX-License-Identifier: MIT */
/**
 * @file port_fixed.h
 * @brief Port controls that this device does not offer.
 *
 * Part of port.h. frame.h says what a fixed-result entry point is.
 */
#ifndef SWCTL_PORT_FIXED_H
#define SWCTL_PORT_FIXED_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0. The
 * sentence says what the call is for on a device that offers it.
 * @{
 */
/** Whether a gigabit port is the clock master of its link. */
SWCTL_API int32_t user_port_master_get(uint32_t lead, ...);
/** Makes a gigabit port the clock master or slave of its link. */
SWCTL_API int32_t user_port_master_set(uint32_t lead, ...);
/** The spanning-tree state of a port. */
SWCTL_API int32_t user_port_stp_get(uint32_t lead, ...);
/** Sets the spanning-tree state of a port. */
SWCTL_API int32_t user_port_stp_set(uint32_t lead, ...);
/** Whether a port accepts BPDUs. */
SWCTL_API int32_t user_port_bpdu_enable_get(uint32_t lead, ...);
/** Lets a port accept or drop BPDUs. */
SWCTL_API int32_t user_port_bpdu_enable_set(uint32_t lead, ...);
/** Lets a port accept or drop broadcast frames. */
SWCTL_API int32_t user_port_brcast_set(uint32_t lead, ...);
/** Whether a port accepts broadcast frames. */
SWCTL_API int32_t user_port_brcast_get(uint32_t lead, ...);
/** Lets a port accept or drop multicast frames. */
SWCTL_API int32_t user_port_mucast_set(uint32_t lead, ...);
/** Whether a port accepts multicast frames. */
SWCTL_API int32_t user_port_mucast_get(uint32_t lead, ...);
/** Lets a port accept or drop unicast frames. */
SWCTL_API int32_t user_port_uicast_set(uint32_t lead, ...);
/** Whether a port accepts unicast frames. */
SWCTL_API int32_t user_port_uicast_get(uint32_t lead, ...);
/** Whether a port drops frames of VLANs that it is not a member of. */
SWCTL_API int32_t user_port_vlan_member_get(uint32_t lead, ...);
/** Lets a port drop or accept frames of VLANs that it is not a member of. */
SWCTL_API int32_t user_port_vlan_member_set(uint32_t lead, ...);
/** Whether VLAN ingress filtering is on at a port. */
SWCTL_API int32_t user_port_ifilter_get(uint32_t lead, ...);
/** Blocks flooding from one port to another. */
SWCTL_API int32_t user_port_flood_block_set(uint32_t lead, ...);
/** Whether flooding from one port to another is blocked. */
SWCTL_API int32_t user_port_flood_block_get(uint32_t lead, ...);
/** Sets the TPID of a port's inner tags. */
SWCTL_API int32_t user_port_inner_tpid_set(uint32_t lead, ...);
/** The TPID of a port's inner tags. */
SWCTL_API int32_t user_port_inner_tpid_get(uint32_t lead, ...);
/** Reads a register of a port's PHY. */
SWCTL_API int32_t user_port_phy_get(uint32_t lead, ...);
/** Writes a register of a port's PHY. */
SWCTL_API int32_t user_port_phy_set(uint32_t lead, ...);
/** @} */

SWCTL_END_DECLS

#endif
