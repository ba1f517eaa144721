/* SPDX-License-Identifier: MIT */
/**
 * @file l2_walk.h
 * @brief The layer-2 address table: walking it, entry by entry.
 *
 * Part of l2.h, whose rules apply.
 *
 * **Stale entries.** A walk over unicast entries does more than read. It looks
 * up the VLAN of each entry with rtk_vlan_port_get(). If that fails (negative
 * result), the VLAN no longer exists: the walk deletes the entry with
 * rtk_l2_addr_del(0, vid, mac), ignoring its result, and logs the removal if
 * the entry was static. The caller never sees such an entry, even if the chip
 * refused to delete it. Walks over multicast entries only read.
 */
#ifndef SWCTL_L2_WALK_H
#define SWCTL_L2_WALK_H

#include <swctl/l2.h>

SWCTL_BEGIN_DECLS

/**
 * @brief The function that a walk calls for each unicast entry.
 *
 * @param unit  the unit that was passed to the walk
 * @param entry the entry, in the walk's own memory. It may be changed, and
 *              deleted from the chip; the pointer is not valid after the call.
 * @param data  the data that was passed to the walk
 * @return negative to end the walk, anything else to go on
 */
typedef int32_t (*user_l2_walk_callback_t)(uint32_t unit, chip_l2_ucast_entry *entry, void *data);

/**
 * @brief The function that a walk calls for each multicast entry. Its result
 *        is ignored.
 *
 * The arguments are those of ::user_l2_walk_callback_t.
 */
typedef int32_t (*user_l2_mcast_walk_callback_t)(uint32_t unit, chip_l2_mcast_entry *entry,
                                                 void *data);

/**
 * @brief Walks the unicast entries of unit 0 in the chip's scan order.
 *
 * Calls rtk_l2_nextValidAddr_get(0, &index, 1, &entry) from index -1 on, until
 * its result is not 0; static entries come too. For each entry it sets
 * ::L2_FLAG_VIOLATION in the flags if bit 0 of the state word is set, looks up
 * the VLAN with rtk_vlan_port_get(0, entry.vid, ...), and calls `callback`, or
 * removes the entry as stale. The location in the trace is "rtk_l2_traverse".
 * Deleting the current entry does not restart the walk.
 *
 * The entry is cleared once, before the first step.
 *
 * @param unit     passed to the callback; the SDK always gets unit 0
 * @param callback called for each entry; not null
 * @param data     passed to the callback
 * @return 0, always: a failed scan is the end of the table
 */
SWCTL_API int32_t rtk_l2_traverse(uint32_t unit, user_l2_walk_callback_t callback, void *data);

/**
 * @brief Walks the unicast entries of unit 0, to find IP phones among them.
 *
 * Passes through to rtk_l2_traverse(0, callback, data), by its exported name.
 *
 * @param callback called for each entry; not null
 * @param data     passed to the callback
 * @return the result of the walk
 */
SWCTL_API int32_t user_l2_voice_vlan_traverse(user_l2_walk_callback_t callback, void *data);

/**
 * @brief Walks the multicast entries of a unit in the chip's scan order.
 *
 * Calls rtk_l2_nextValidMcastAddr_get(unit, &index, &entry) from index -1 on,
 * until its result is not 0, and `callback` for each entry. Removes nothing:
 * VLANs are not looked up.
 *
 * @param unit     switch unit, passed to the SDK and to the callback
 * @param callback called for each entry; not null
 * @param data     passed to the callback
 * @return 0, always: a failed scan is the end of the table
 */
SWCTL_API int32_t rtk_l2_mcast_traverse(uint32_t unit, user_l2_mcast_walk_callback_t callback,
                                        void *data);

/**
 * @brief Reads the next unicast entry of unit 0: one step of a walk.
 *
 * Makes the calls of one step of rtk_l2_traverse(). A stale entry is removed
 * and logged in the same way, with the location
 * "user_netlink_mac_nextValidAddr_get".
 *
 * @param lead      ignored
 * @param out       receives flags, mac, vid, port, tgid and aux; the rest is
 *                  left alone
 * @param scanIndex the position of the scan; -1 to start. Passed to the SDK,
 *                  which advances it, past a stale entry too.
 * @return 0 if an entry was read; -1 at the end of the table and for a stale
 *         entry, with `out` unchanged. The result does not tell the two apart:
 *         a caller that stops at the first -1 may stop before the end.
 */
SWCTL_API int32_t user_netlink_mac_nextValidAddr_get(uint32_t lead, user_l2_addr_t *out,
                                                     int32_t *scanIndex);

/**
 * @brief Prints every unicast entry of unit 0 on standard output.
 *
 * Calls rtk_l2_traverse(0, test_fun_callback, ...) with the address of a byte
 * that holds the low byte of `value`. Like every such walk, it removes stale
 * entries.
 *
 * @param lead  ignored
 * @param value its low byte is passed to the callback, which ignores it
 * @return 0, always
 */
SWCTL_API int32_t user_mac_table_traverse(uint32_t lead, uint32_t value);

/**
 * @brief Marks the VLANs that have a multicast entry.
 *
 * Stores 1 into present[vid - 1] for each entry that
 * rtk_l2_nextValidMcastAddr_get(unit, ...) returns. Clears nothing.
 *
 * @param unit    switch unit, passed to the SDK; no leading argument
 * @param present array with an element for every VLAN ID up to the highest
 *                that an entry may have. An entry of VLAN 0 writes the word
 *                before the array. May be null.
 * @return 0; -1 if `present` is null, without an SDK call
 */
SWCTL_API int32_t user_is_mcast_addr_exist_vlan_is(uint32_t unit, int32_t *present);

/**
 * @brief Finds the VLAN of the first multicast entry in a range of VLANs.
 *
 * Calls rtk_l2_nextValidMcastAddr_get(unit, ...) until an entry is in the
 * range or the result is not 0.
 *
 * @param unit switch unit, passed to the SDK; no leading argument
 * @param low  lowest VLAN ID; the low 16 bits count
 * @param high highest VLAN ID; the low 16 bits count
 * @return the VLAN ID of the first entry in scan order with low <= id <= high,
 *         0 if there is none
 */
SWCTL_API int32_t user_is_mcast_addr_exist_by_vlan(uint32_t unit, uint32_t low, uint32_t high);

SWCTL_END_DECLS

#endif
