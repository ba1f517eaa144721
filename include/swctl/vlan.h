/* SPDX-License-Identifier: MIT */
/**
 * @file vlan.h
 * @brief VLANs: membership, port defaults and classification rules.
 *
 * The laws in frame.h hold throughout.
 */
#ifndef SWCTL_VLAN_H
#define SWCTL_VLAN_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0.
 * The sentence says what the call is for on a device that offers it.
 * @{
 */
/** Chooses how unknown multicast frames of a VLAN are flooded. */
SWCTL_API int32_t user_vlan_mcast_flood_set(uint32_t lead, ...);
/** How unknown multicast frames of a VLAN are flooded. */
SWCTL_API int32_t user_vlan_mcast_flood_get(uint32_t lead, ...);
/** Sets a switch-wide VLAN control. */
SWCTL_API int32_t user_vlan_control_set(uint32_t lead, ...);
/** Reads a switch-wide VLAN control. */
SWCTL_API int32_t user_vlan_control_get(uint32_t lead, ...);
/** Sets a VLAN control of one port. */
SWCTL_API int32_t user_vlan_control_port_set(uint32_t lead, ...);
/** Reads a VLAN control of one port. */
SWCTL_API int32_t user_vlan_control_port_get(uint32_t lead, ...);
/** Adds a generic port (port, trunk or tunnel) to a VLAN. */
SWCTL_API int32_t user_vlan_gport_add(uint32_t lead, ...);
/** Takes a generic port out of a VLAN. */
SWCTL_API int32_t user_vlan_gport_delete(uint32_t lead, ...);
/** Takes every generic port out of a VLAN. */
SWCTL_API int32_t user_vlan_gport_delete_all(uint32_t lead, ...);
/** Whether and how a generic port is in a VLAN. */
SWCTL_API int32_t user_vlan_gport_get(uint32_t lead, ...);
/** Every generic port of a VLAN. */
SWCTL_API int32_t user_vlan_gport_get_all(uint32_t lead, ...);
/** Deletes every MAC-based VLAN rule. */
SWCTL_API int32_t user_vlan_mac_delete_all(uint32_t lead, ...);
/** Deletes every IPv4-subnet VLAN rule. */
SWCTL_API int32_t user_vlan_ip4_delete_all(uint32_t lead, ...);
/** Deletes every protocol-based VLAN rule. */
SWCTL_API int32_t user_port_protocol_vlan_delete_all(uint32_t lead, ...);
/** @} */

/**
 * @name Fixed result -1
 * Not supported: each ignores its arguments, calls nothing, writes nothing and
 * returns -1. The sentence says what the call is for on a device that offers
 * it.
 * @{
 */
/** Deletes every VLAN translation rule. */
SWCTL_API int32_t user_vlan_translate_delete_all(uint32_t lead, ...);
/** Reads a VLAN translation rule back. */
SWCTL_API int32_t user_vlan_translate_get(uint32_t lead, ...);
/** Deletes every egress translation entry. */
SWCTL_API int32_t user_vlan_translate_egress_delete_all(uint32_t lead, ...);
/** Reads an egress translation entry back. */
SWCTL_API int32_t user_vlan_translate_egress_get(uint32_t lead, ...);
/** Deletes every double-tagging rule. */
SWCTL_API int32_t user_vlan_dtag_delete_all(uint32_t lead, ...);
/** Reads a double-tagging rule back. */
SWCTL_API int32_t user_vlan_dtag_get(uint32_t lead, ...);
/** @} */

SWCTL_END_DECLS

#endif
