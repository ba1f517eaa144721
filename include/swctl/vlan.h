/* SPDX-License-Identifier: MIT */
/**
 * @file vlan.h
 * @brief VLANs: membership, PVIDs and classification rules.
 *
 * The rules in frame.h apply, and in addition:
 * - Only the low 16 bits of a VLAN ID count. The SDK decides which IDs are
 *   valid (1 to 4094 in IEEE 802.1Q).
 * - A range goes from its first to its last ID, both included. Each function
 *   says what it returns if the last ID is below the first.
 * - Ports are passed in bitmaps. Most functions take logical interfaces and
 *   convert each with adp_intf_2_phy_id() just before the SDK call that needs
 *   it; user_vlan_port_set() and user_vlan_port_get() take chip ports. Each
 *   says how many of the 256 bits it uses.
 * - Nothing is printed.
 *
 * Rules that classify frames are in vlan_rules.h, which this header includes.
 */
#ifndef SWCTL_VLAN_H
#define SWCTL_VLAN_H

#include <swctl/types.h>
#include <swctl/vlan_rules.h>

SWCTL_BEGIN_DECLS

/** The SDK's result for the creation of a VLAN that exists. */
#define USER_VLAN_EXISTS 0x10004

/**
 * @brief Creates a VLAN without ports.
 *
 * Passes through to rtk_vlan_create(unit, vid).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param vid  VLAN ID
 * @return the SDK's result; ::USER_VLAN_EXISTS if the VLAN exists
 */
SWCTL_API int32_t user_vlan_create(uint32_t lead, uint32_t unit, uint32_t vid);

/**
 * @brief Creates a range of VLANs without ports.
 *
 * Calls rtk_vlan_create(unit, vid) for each ID from the first to the last but
 * VLAN 1. Stops at the first result that is neither 0 nor ::USER_VLAN_EXISTS.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param first first VLAN ID
 * @param last  last VLAN ID
 * @return the result of the last SDK call: the one that stopped it, or that of
 *         the last VLAN, which is 0 or ::USER_VLAN_EXISTS; 0 if no call was
 *         made, as when `last` is below `first`
 */
SWCTL_API int32_t user_vlan_createEx(uint32_t lead, uint32_t unit, uint32_t first, uint32_t last);

/**
 * @brief Destroys a VLAN.
 *
 * Passes through to rtk_vlan_destroy(unit, vid).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param vid  VLAN ID
 * @return the SDK's result
 */
SWCTL_API int32_t user_vlan_destroy(uint32_t lead, uint32_t unit, uint32_t vid);

/**
 * @brief Destroys a range of VLANs, VLAN 1 included.
 *
 * Calls rtk_vlan_destroy(unit, vid) for each ID from the first to the last and
 * stops at the first result that is not 0.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param first first VLAN ID
 * @param last  last VLAN ID
 * @return 0, also if `last` is below `first`; otherwise the result that
 *         stopped it
 */
SWCTL_API int32_t user_vlan_destroyEx(uint32_t lead, uint32_t unit, uint32_t first, uint32_t last);

/**
 * @brief Destroys every VLAN and restores the default VLAN.
 *
 * Passes through to rtk_vlan_destroyAll(unit, 1).
 *
 * @param lead ignored
 * @param unit switch unit
 * @return the SDK's result
 */
SWCTL_API int32_t user_vlan_destroy_all(uint32_t lead, uint32_t unit);

/**
 * @brief Adds interface 0, if it is in the bitmap, to a VLAN.
 *
 * To add the ports of a bitmap, use user_vlan_port_addEx(). This function
 * keeps a sum that starts at -1. It goes through the interfaces 0 to 31 and,
 * for each one in the bitmap, adds the result of rtk_vlan_port_add(unit, vid,
 * port, untagged) for its chip port to the sum. After each interface, in the
 * bitmap or not, it stops if the sum is not 0. So it stops at interface 0
 * unless the SDK returned 1 there. Programs rely on the results that follow.
 * The bitmap is read once, before the first call.
 *
 * @param lead     ignored
 * @param unit     switch unit
 * @param vid      VLAN ID
 * @param ports    logical interfaces; only 0 to 31 are used
 * @param untagged 1: frames leave untagged, 0: tagged; passed on unchanged
 * @return the sum: -1 without any call if interface 0 is not in the bitmap; -1
 *         also if it is and was added; in general the SDK's result less 1
 */
SWCTL_API int32_t user_vlan_port_add(uint32_t lead, uint32_t unit, uint32_t vid,
                                     const user_pbmp_t *ports, uint32_t untagged);

/**
 * @brief Adds ports to a range of VLANs; present members stay.
 *
 * For each VLAN from the first to the last: reads the members with
 * rtk_vlan_port_get(unit, vid, ...), ignoring its result (a mask that it did
 * not write counts as empty); converts the tagged and then the untagged
 * interfaces, each in ascending order; and calls rtk_vlan_port_set(unit, vid,
 * ...) with the new masks. An interface in both bitmaps becomes untagged. A
 * failure does not stop it.
 *
 * An interface that the board does not have is not left out: the adapter's
 * answer modulo 32 is a bit of the mask, and the SDK may refuse the mask.
 *
 * @param lead     ignored
 * @param unit     switch unit
 * @param first    first VLAN ID
 * @param last     last VLAN ID
 * @param tagged   logical interfaces 0 to 255 that become tagged members
 * @param untagged logical interfaces 0 to 255 that become untagged members
 * @return the result of the last rtk_vlan_port_set(); -1 without any call if
 *         `last` is below `first`
 */
SWCTL_API int32_t user_vlan_port_addEx(uint32_t lead, uint32_t unit, uint32_t first, uint32_t last,
                                       const user_pbmp_t *tagged, const user_pbmp_t *untagged);

/**
 * @brief Removes interface 0, if it is in the bitmap, from a VLAN.
 *
 * To remove the ports of a bitmap, use user_vlan_port_removeEx(). This
 * function does what user_vlan_port_add() does, with the same sum, but calls
 * rtk_vlan_port_del(unit, vid, port).
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param vid   VLAN ID
 * @param ports logical interfaces; only 0 to 31 are used
 * @return as for user_vlan_port_add()
 */
SWCTL_API int32_t user_vlan_port_remove(uint32_t lead, uint32_t unit, uint32_t vid,
                                        const user_pbmp_t *ports);

/**
 * @brief Removes ports from a range of VLANs.
 *
 * Calls rtk_vlan_port_del(unit, vid, port) for each VLAN from the first to the
 * last and each interface in the bitmap, and stops at the first result that is
 * not 0.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param first first VLAN ID
 * @param last  last VLAN ID
 * @param ports logical interfaces; only 0 to 31 are used
 * @return 0, also if `last` is below `first`; otherwise the result that
 *         stopped it
 */
SWCTL_API int32_t user_vlan_port_removeEx(uint32_t lead, uint32_t unit, uint32_t first,
                                          uint32_t last, const user_pbmp_t *ports);

/**
 * @brief Replaces the members of a VLAN, given as chip ports.
 *
 * Calls rtk_vlan_port_set(unit, vid, ...) with word 0 of each bitmap.
 *
 * @param lead     ignored
 * @param unit     switch unit
 * @param vid      VLAN ID
 * @param member   chip ports 0 to 31 that are members
 * @param untagged chip ports 0 to 31 that are untagged
 * @return the SDK's result
 */
SWCTL_API int32_t user_vlan_port_set(uint32_t lead, uint32_t unit, uint32_t vid,
                                     const user_pbmp_t *member, const user_pbmp_t *untagged);

/**
 * @brief Reads the members of a VLAN as chip ports.
 *
 * Calls rtk_vlan_port_get(unit, vid, ...).
 *
 * @param lead     ignored
 * @param unit     switch unit
 * @param vid      VLAN ID
 * @param member   receives the chip ports that are members: word 0 is the SDK's
 *                 mask, words 1 to 7 are 0. Written whatever the result is, and
 *                 0 if the SDK wrote nothing.
 * @param untagged receives the untagged chip ports, in the same way
 * @return the SDK's result
 */
SWCTL_API int32_t user_vlan_port_get(uint32_t lead, uint32_t unit, uint32_t vid,
                                     user_pbmp_t *member, user_pbmp_t *untagged);

/**
 * @brief Sets the PVID of every port.
 *
 * Calls rtk_vlan_portPvid_set(unit, port, vid) for the chip port of each
 * interface from 0 to 31, and stops at the first result that is not 0. On a
 * board with fewer interfaces, the SDK may refuse what the adapter returns for
 * the first number after the last interface; all ports are then set, and the
 * result is that refusal.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param vid  VLAN ID
 * @return 0, or the result that stopped it
 */
SWCTL_API int32_t user_vlan_default_set(uint32_t lead, uint32_t unit, uint32_t vid);

/**
 * @brief Reads the PVID of chip port 1, in place of all ports.
 *
 * Calls rtk_vlan_portPvid_get(unit, 1, ...).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param vid  receives the low 16 bits of the VLAN ID; written whatever the
 *             result is, and 0 if the SDK wrote nothing
 * @return the SDK's result
 */
SWCTL_API int32_t user_vlan_default_get(uint32_t lead, uint32_t unit, uint16_t *vid);

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0. The
 * sentence says what the call is for on a device that offers it.
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
/** Removes a generic port from a VLAN. */
SWCTL_API int32_t user_vlan_gport_delete(uint32_t lead, ...);
/** Removes every generic port from a VLAN. */
SWCTL_API int32_t user_vlan_gport_delete_all(uint32_t lead, ...);
/** Whether and how a generic port is in a VLAN. */
SWCTL_API int32_t user_vlan_gport_get(uint32_t lead, ...);
/** Every generic port of a VLAN. */
SWCTL_API int32_t user_vlan_gport_get_all(uint32_t lead, ...);
/** @} */

SWCTL_END_DECLS

#endif
