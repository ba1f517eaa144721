/* SPDX-License-Identifier: MIT */
/**
 * @file l2_addr.h
 * @brief The layer-2 address table: adding, reading and deleting entries.
 *
 * Part of l2.h, whose rules apply.
 *
 * Only the low 16 bits of a VLAN ID count. Only bits 0 to 31 (word 0) of a
 * port bitmap reach the chip; a bitmap that is read has 0 in the other words.
 * Addresses, VLANs and ports are not checked; the SDK refuses what it does not
 * have.
 *
 * **Failed reads.** user_mac_addr_get(), user_mac_mcast_addr_get() and
 * user_mac_mcast_get_fwd_index() write their outputs whatever the result is.
 * They clear an entry, fill in VLAN and address, pass it to the SDK, and copy
 * from it what the SDK left there. So after a failed read an output is 0
 * unless the SDK wrote something else before it failed.
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
 * "user_mac_addr_add", whether or not the SDK accepted the entry: the log
 * records the request.
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
 * @param vid  VLAN ID
 * @param out  receives flags (with ::L2_FLAG_VIOLATION if bit 0 of the state
 *             word is set), port, tgid and aux, whatever the result is.
 *             Nothing else is written, not even mac and vid.
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_addr_get(uint32_t lead, const uint8_t *mac, uint32_t vid,
                                    user_l2_addr_t *out);

/**
 * @brief Deletes a unicast entry.
 *
 * Calls rtk_l2_addr_del(0, vid, mac) with a copy of the address. Nothing is
 * logged, not even for a static entry.
 *
 * @param lead ignored
 * @param mac  six bytes
 * @param vid  VLAN ID
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_addr_delete(uint32_t lead, const uint8_t *mac, uint32_t vid);

/**
 * @brief Adds ports to a multicast group, or makes the group.
 *
 * Calls rtk_l2_mcastAddr_get(0, &entry). If that fails, it calls
 * rtk_l2_mcastAddr_add(0, &entry) with the caller's ports; nothing that the
 * failed read left is used. Otherwise it adds the caller's ports to those of
 * the group (and removes none), calls rtk_l2_mcastAddr_del(0, vid, mac),
 * ignoring its result, and then rtk_l2_mcastAddr_add() with the entry that was
 * read, its forwarding index included.
 *
 * The steps are not atomic: another change of the group between them is lost,
 * and for a moment the group is not in the chip.
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
 * @param vid  VLAN ID
 * @param out  receives pbmp (chip ports), whatever the result is. Nothing else
 *             is written.
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
 * @param vid  VLAN ID
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_mcast_addr_delete(uint32_t lead, const uint8_t *mac, uint32_t vid);

/**
 * @brief Adds a multicast group with exactly the ports given.
 *
 * Calls rtk_l2_mcastAddr_add(0, &entry). The function does not look for the
 * group first; the SDK decides what happens to a group that exists.
 *
 * @param mac  six bytes; no leading argument
 * @param vid  VLAN ID
 * @param pbmp chip ports, by value
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_mcast_add_with_portmask(const uint8_t *mac, uint32_t vid,
                                                   user_pbmp_t pbmp);

/**
 * @brief Reads the forwarding port-mask index of a multicast group.
 *
 * Calls rtk_l2_mcastAddr_get(0, &entry).
 *
 * @param mac   six bytes; no leading argument
 * @param vid   VLAN ID
 * @param index receives the index, whatever the result is
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_mcast_get_fwd_index(const uint8_t *mac, uint32_t vid, uint32_t *index);

SWCTL_END_DECLS

#endif
