/* SPDX-License-Identifier: MIT */
/**
 * @file l2_addr.h
 * @brief The layer-2 address table: adding, reading and deleting entries.
 *
 * Part of l2.h, which says what holds for the whole family.
 *
 * A VLAN id is the low 16 bits of its argument. Of a port bitmap only bits 0
 * to 31 (word 0) reach the chip; on reading, the other words become 0.
 * Addresses, VLANs and ports are not checked; the SDK refuses what it does not
 * have. The readers write their outputs after a failed read too, from an entry
 * that was cleared before.
 */
#ifndef SWCTL_L2_ADDR_H
#define SWCTL_L2_ADDR_H

#include <swctl/l2.h>

SWCTL_BEGIN_DECLS

/**
 * @brief Adds a unicast entry.
 *
 * Calls rtk_l2_addr_add(0, &entry) with vid, mac, port, flags, tgid (as the
 * trunk) and extra of `addr`; everything else in the entry is 0. If the flags
 * are those of a static entry, the addition is logged with the location
 * "user_mac_addr_add", whether or not the SDK took the entry: the log records
 * the request.
 *
 * @param lead ignored
 * @param addr the entry, by value; the flags go to the chip unchanged
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_addr_add(uint32_t lead, user_l2_addr_t addr);

/**
 * @brief Reads a unicast entry.
 *
 * Calls rtk_l2_addr_get(0, &entry).
 *
 * @param lead ignored
 * @param mac  six bytes
 * @param vid  VLAN id
 * @param out  receives flags (with ::L2_FLAG_VIOLATION if bit 0 of the state
 *             word is set), port, tgid and aux, whatever the result: after a
 *             failed read all 0. Nothing else is written, mac and vid neither.
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_addr_get(uint32_t lead, const uint8_t *mac, uint32_t vid,
                                    user_l2_addr_t *out);

/**
 * @brief Deletes a unicast entry.
 *
 * Calls rtk_l2_addr_del(0, vid, mac) with a copy of the address. Not logged,
 * not even for a static entry.
 *
 * @param lead ignored
 * @param mac  six bytes
 * @param vid  VLAN id
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_addr_delete(uint32_t lead, const uint8_t *mac, uint32_t vid);

/**
 * @brief Adds ports to a multicast group, which it makes if need be.
 *
 * Calls rtk_l2_mcastAddr_get(0, &entry). If that fails, it calls
 * rtk_l2_mcastAddr_add(0, &entry) with the caller's ports. Otherwise it adds
 * the caller's ports to those of the group (none is taken away), calls
 * rtk_l2_mcastAddr_del(0, vid, mac), result ignored, and rtk_l2_mcastAddr_add()
 * with the entry as it was read, forwarding index included.
 *
 * The steps are not atomic: a change of the same group between them is lost,
 * and the group is absent from the chip for a moment.
 *
 * @param lead ignored
 * @param addr the group by value: vid, mac and pbmp (chip ports) are read
 * @return the result of rtk_l2_mcastAddr_add()
 */
SWCTL_API int32_t user_mac_mcast_addr_add(uint32_t lead, user_l2_addr_t addr);

/**
 * @brief Reads the ports of a multicast group.
 *
 * Calls rtk_l2_mcastAddr_get(0, &entry).
 *
 * @param lead ignored
 * @param mac  six bytes
 * @param vid  VLAN id
 * @param out  receives pbmp (chip ports), whatever the result: after a failed
 *             read an empty bitmap. Nothing else is written.
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_mcast_addr_get(uint32_t lead, const uint8_t *mac, uint32_t vid,
                                          user_l2_addr_t *out);

/**
 * @brief Deletes a multicast group.
 *
 * Calls rtk_l2_mcastAddr_del(0, vid, mac).
 *
 * @param lead ignored
 * @param mac  six bytes
 * @param vid  VLAN id
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_mcast_addr_delete(uint32_t lead, const uint8_t *mac, uint32_t vid);

/**
 * @brief Adds a multicast group with exactly the ports given.
 *
 * Calls rtk_l2_mcastAddr_add(0, &entry). There is no lookup and no merging:
 * what becomes of a group that exists is the SDK's decision.
 *
 * @param mac  six bytes; no leading argument
 * @param vid  VLAN id
 * @param pbmp chip ports, by value
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_mcast_add_with_portmask(const uint8_t *mac, uint32_t vid,
                                                   user_pbmp_t pbmp);

/**
 * @brief The forwarding port-mask index of a multicast group.
 *
 * Calls rtk_l2_mcastAddr_get(0, &entry).
 *
 * @param mac   six bytes; no leading argument
 * @param vid   VLAN id
 * @param index receives the index, whatever the result: 0 after a failed read
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_mcast_get_fwd_index(const uint8_t *mac, uint32_t vid, uint32_t *index);

SWCTL_END_DECLS

#endif
