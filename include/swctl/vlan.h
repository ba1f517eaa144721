/* SPDX-License-Identifier: MIT */
/**
 * @file vlan.h
 * @brief VLANs: membership, port defaults and classification rules.
 *
 * The laws in frame.h hold throughout, and these:
 * - A VLAN ID is a word of which only the low 16 bits count. Which IDs exist
 *   (1 to 4094, IEEE 802.1Q) is the SDK's to say.
 * - A range runs from its first to its last ID inclusive. Each function says
 *   what it answers to a range whose last ID is below its first.
 * - Ports stand in bitmaps. Most functions take logical interfaces and convert
 *   each with adp_intf_2_phy_id(), just before the SDK call that it is for;
 *   user_vlan_port_set() and user_vlan_port_get() take chip ports. Each says
 *   how many of the 256 bits it looks at.
 * - Nothing is printed.
 *
 * Rules that classify frames stand in vlan_rules.h, which this header
 * includes.
 */
#ifndef SWCTL_VLAN_H
#define SWCTL_VLAN_H

#include <swctl/types.h>
#include <swctl/vlan_rules.h>

SWCTL_BEGIN_DECLS

/** What the SDK answers to the creation of a VLAN that exists. */
#define USER_VLAN_EXISTS 0x10004

/**
 * @brief Creates a VLAN without ports.
 *
 * Passes through to rtk_vlan_create(unit, vid).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param vid  VLAN ID
 * @return the SDK's result; ::USER_VLAN_EXISTS if there is such a VLAN
 */
SWCTL_API int32_t user_vlan_create(uint32_t lead, uint32_t unit, uint32_t vid);

/**
 * @brief Creates a range of VLANs without ports.
 *
 * Calls rtk_vlan_create(unit, vid) for each ID from the first to the last but
 * VLAN 1, which always exists. ::USER_VLAN_EXISTS does not stop it; any other
 * result than 0 does.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param first first VLAN ID
 * @param last  last VLAN ID
 * @return the result of the last SDK call: that which stopped it, or that of
 *         the last VLAN, 0 or ::USER_VLAN_EXISTS; 0 without any call, also if
 *         `last` is below `first`
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
 * @return 0, also if `last` is below `first`; else the result that stopped it
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
 * Use user_vlan_port_addEx() to add the ports of a bitmap. This function keeps
 * a sum that starts at -1, walks the interfaces 0 to 31 and adds, for each one
 * in the bitmap, the result of rtk_vlan_port_add(unit, vid, port, untagged)
 * for its chip port. After each interface, in the bitmap or not, it stops if
 * the sum is not 0. So it stops at interface 0, unless the SDK answered 1
 * there. Programs rely on the results that follow from that.
 *
 * @param lead     ignored
 * @param unit     switch unit
 * @param vid      VLAN ID
 * @param ports    logical interfaces; only 0 to 31 are looked at
 * @param untagged 1 if frames leave without a tag, 0 with; passed on unchanged
 * @return the sum: -1 without any call if interface 0 is not in the bitmap, -1
 *         too if it is and was added, the SDK's result less 1 in general
 */
SWCTL_API int32_t user_vlan_port_add(uint32_t lead, uint32_t unit, uint32_t vid,
                                     const user_pbmp_t *ports, uint32_t untagged);

/**
 * @brief Adds ports to a range of VLANs; those that were in stay in.
 *
 * For each VLAN from the first to the last: rtk_vlan_port_get(unit, vid, ...),
 * whose result is ignored and whose masks count as empty where it wrote none;
 * then the tagged and the untagged interfaces are converted, each in rising
 * order; then rtk_vlan_port_set(unit, vid, ...) with the masks that result. An
 * interface in both bitmaps ends untagged. A failure does not stop it.
 *
 * An interface that the board does not have is not left out: the adapter's
 * answer, taken modulo 32, is a port of the mask, which the SDK may refuse.
 *
 * @param lead     ignored
 * @param unit     switch unit
 * @param first    first VLAN ID
 * @param last     last VLAN ID
 * @param tagged   logical interfaces 0 to 255 whose frames leave with a tag
 * @param untagged logical interfaces 0 to 255 whose frames leave without
 * @return the result of the last rtk_vlan_port_set(); -1 without any call if
 *         `last` is below `first`
 */
SWCTL_API int32_t user_vlan_port_addEx(uint32_t lead, uint32_t unit, uint32_t first, uint32_t last,
                                       const user_pbmp_t *tagged, const user_pbmp_t *untagged);

/**
 * @brief Takes interface 0, if it is in the bitmap, out of a VLAN.
 *
 * Use user_vlan_port_removeEx() to remove the ports of a bitmap. This is the
 * walk of user_vlan_port_add(), sum and all, with rtk_vlan_port_del(unit, vid,
 * port).
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param vid   VLAN ID
 * @param ports logical interfaces; only 0 to 31 are looked at
 * @return as user_vlan_port_add()
 */
SWCTL_API int32_t user_vlan_port_remove(uint32_t lead, uint32_t unit, uint32_t vid,
                                        const user_pbmp_t *ports);

/**
 * @brief Takes ports out of a range of VLANs.
 *
 * Calls rtk_vlan_port_del(unit, vid, port) for each VLAN from the first to the
 * last and each interface in the bitmap, and stops at the first result that is
 * not 0.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param first first VLAN ID
 * @param last  last VLAN ID
 * @param ports logical interfaces; only 0 to 31 are looked at
 * @return 0, also if `last` is below `first`; else the result that stopped it
 */
SWCTL_API int32_t user_vlan_port_removeEx(uint32_t lead, uint32_t unit, uint32_t first,
                                          uint32_t last, const user_pbmp_t *ports);

/**
 * @brief Replaces the ports of a VLAN, in the chip's numbering.
 *
 * Calls rtk_vlan_port_set(unit, vid, ...) with word 0 of each bitmap.
 *
 * @param lead     ignored
 * @param unit     switch unit
 * @param vid      VLAN ID
 * @param member   chip ports 0 to 31 that are members
 * @param untagged chip ports 0 to 31 whose frames leave without a tag
 * @return the SDK's result
 */
SWCTL_API int32_t user_vlan_port_set(uint32_t lead, uint32_t unit, uint32_t vid,
                                     const user_pbmp_t *member, const user_pbmp_t *untagged);

/**
 * @brief The ports of a VLAN, in the chip's numbering.
 *
 * Calls rtk_vlan_port_get(unit, vid, ...).
 *
 * @param lead     ignored
 * @param unit     switch unit
 * @param vid      VLAN ID
 * @param member   receives the members: word 0 is the SDK's mask, words 1 to 7
 *                 are 0. Written whatever the result, 0 if the SDK wrote none.
 * @param untagged receives those whose frames leave without a tag, likewise
 * @return the SDK's result
 */
SWCTL_API int32_t user_vlan_port_get(uint32_t lead, uint32_t unit, uint32_t vid,
                                     user_pbmp_t *member, user_pbmp_t *untagged);

/**
 * @brief Gives every port the same default VLAN.
 *
 * Calls rtk_vlan_portPvid_set(unit, port, vid) for the chip port of each
 * interface from 0 to 31 and stops at the first result that is not 0. A board
 * with fewer interfaces ends the walk behind its last one if the SDK refuses
 * what the adapter answers there; all its ports are then set nevertheless.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param vid  VLAN ID
 * @return 0, or the result that stopped it
 */
SWCTL_API int32_t user_vlan_default_set(uint32_t lead, uint32_t unit, uint32_t vid);

/**
 * @brief The default VLAN of chip port 1, which stands for all.
 *
 * Calls rtk_vlan_portPvid_get(unit, 1, ...).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param vid  receives the low 16 bits of the VLAN ID; written whatever the
 *             result, 0 if the SDK wrote none
 * @return the SDK's result
 */
SWCTL_API int32_t user_vlan_default_get(uint32_t lead, uint32_t unit, uint16_t *vid);

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
/** @} */

SWCTL_END_DECLS

#endif
