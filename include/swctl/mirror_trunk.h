/* SPDX-License-Identifier: MIT */
/**
 * @file mirror_trunk.h
 * @brief Mirroring and trunk groups.
 *
 * The rules in frame.h apply.
 */
#ifndef SWCTL_MIRROR_TRUNK_H
#define SWCTL_MIRROR_TRUNK_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0. The
 * sentence says what the call is for on a device that offers it.
 * @{
 */
/** Prepares mirroring. */
SWCTL_API int32_t user_mirror_init(uint32_t lead, ...);
/** Sets the mirror mode: off, by port, by flow. */
SWCTL_API int32_t user_mirror_mode_set(uint32_t lead, ...);
/** The mirror mode. */
SWCTL_API int32_t user_mirror_mode_get(uint32_t lead, ...);
/** What of a port is mirrored. */
SWCTL_API int32_t user_mirror_port_get(uint32_t lead, ...);
/** Prepares trunking. */
SWCTL_API int32_t user_trunk_init(uint32_t lead, ...);
/** Makes a trunk with a given number. */
SWCTL_API int32_t user_trunk_create_id(uint32_t lead, ...);
/** The trunk that a port belongs to. */
SWCTL_API int32_t user_trunk_port_get(uint32_t lead, ...);
/** Adds a port to a trunk. */
SWCTL_API int32_t user_trunk_port_add(uint32_t lead, ...);
/** Removes a port from its trunk. */
SWCTL_API int32_t user_trunk_port_delete(uint32_t lead, ...);
/** Tells the kernel's switch module about the trunks. */
SWCTL_API int32_t user_trunk_send_data_to_kernel(uint32_t lead, ...);
/** @} */

/**
 * @name Mirror modes
 * What of a port is mirrored. Any other value removes the port from the group.
 * @{
 */
#define USER_MIRROR_NONE 0u
#define USER_MIRROR_INGRESS 2u
#define USER_MIRROR_EGRESS 4u
#define USER_MIRROR_BOTH 6u
/** @} */

/**
 * @brief Adds a port to a mirror group, or removes it.
 *
 * On unit 0, whatever the unit argument is. Clears an entry and reads the
 * group into it with rtk_mirror_group_get(0, group, &entry), ignoring the
 * result: after a failed read, the entry is what the SDK left there, zeros if
 * it wrote nothing. Then it changes these fields and calls
 * rtk_mirror_group_set(0, group, &entry):
 * - field 1 (enable) becomes 1, field 2 the mirroring port, field 7 1;
 * - field 12 becomes 1 if the port is 28, in every mode;
 * - the port's bit is set in field 3 (ingress), field 4 (egress) or both, or
 *   cleared in both.
 *
 * All other fields and the bits of other ports keep what was read. Nothing
 * here sets field 12 back to 0 when port 28 is removed, nor field 15 when the
 * group mirrored flows before.
 *
 * A group whose last port is removed stays enabled;
 * user_check_set_mirror_disable() disables it.
 *
 * @param lead           ignored
 * @param unit           ignored
 * @param port           mirrored chip port, 0 to 31. Any other number is not
 *                       refused: its bit is that of the number modulo 32.
 * @param group          mirror group; not checked
 * @param mirroring_port destination chip port of the copies; not checked
 * @param mode           one of USER_MIRROR_*
 * @return the result of the write
 */
SWCTL_API int32_t user_mirror_port_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t group,
                                       uint32_t mirroring_port, uint32_t mode);

/**
 * @brief Makes a mirror group mirror the flows that rules select.
 *
 * Reads and writes the group as user_mirror_port_set() does, with field 1
 * (enable), field 7 and field 15 (flows) set to 1 and field 2 to the mirroring
 * port. The masks of mirrored ports stay.
 *
 * @param lead           ignored
 * @param unit           ignored: unit 0
 * @param group          mirror group; not checked
 * @param mirroring_port destination chip port of the copies; not checked
 * @return the result of the write
 */
SWCTL_API int32_t user_set_flow_mirror(uint32_t lead, uint32_t unit, uint32_t group,
                                       uint32_t mirroring_port);

/**
 * @brief Disables a mirror group.
 *
 * Reads and writes the group as user_mirror_port_set() does, with field 1
 * (enable) and field 2 (mirroring port) set to 0. The masks of mirrored ports
 * stay, and so do fields 7, 12 and 15: a group that is enabled again mirrors
 * the same ports.
 *
 * @param lead  ignored
 * @param unit  ignored: unit 0
 * @param group mirror group; not checked
 * @return the result of the write
 */
SWCTL_API int32_t user_set_mirror_disable(uint32_t lead, uint32_t unit, uint32_t group);

/**
 * @brief Disables a mirror group that has no mirrored port left.
 *
 * Reads the group as user_mirror_port_set() does. If both masks are 0, writes
 * what user_set_mirror_disable() would write; otherwise changes nothing. After
 * a failed read that wrote nothing, both masks are 0.
 *
 * @param lead  ignored
 * @param unit  ignored: unit 0
 * @param group mirror group; not checked
 * @return the result of the write; 0 without a write
 */
SWCTL_API int32_t user_check_set_mirror_disable(uint32_t lead, uint32_t unit, uint32_t group);

/** Most ports of a ::user_trunk_desc_t. */
#define USER_TRUNK_PORTS 35

/**
 * @brief The members of a trunk, 40 bytes, passed by value.
 */
struct user_trunk_desc_t {
  int32_t count;                   /**< number of ports; none if 0 or less */
  uint8_t unused;                  /**< not read */
  uint8_t ports[USER_TRUNK_PORTS]; /**< chip ports, 0 to 31 */
};
typedef struct user_trunk_desc_t user_trunk_desc_t;

/**
 * @brief Sets the members of a trunk.
 *
 * Calls rtk_trunk_port_set(0, trunk, &mask), on unit 0, with the bit of each
 * port. The members replace the old ones.
 *
 * @param lead        ignored
 * @param unit        ignored
 * @param trunk       trunk number; not checked
 * @param description the members. A port number counts modulo 32. If there are
 *                    more than ::USER_TRUNK_PORTS ports, only that many are
 *                    used.
 * @return the SDK's result
 */
SWCTL_API int32_t user_trunk_set(uint32_t lead, uint32_t unit, uint32_t trunk,
                                 user_trunk_desc_t description);

/**
 * @brief Removes all members of a trunk. The empty trunk stays.
 *
 * Calls rtk_trunk_port_set(0, trunk, &mask), on unit 0, with an empty mask.
 *
 * @param lead  ignored
 * @param unit  ignored
 * @param trunk trunk number; not checked
 * @return the SDK's result
 */
SWCTL_API int32_t user_trunk_destroy(uint32_t lead, uint32_t unit, uint32_t trunk);

/**
 * @name Hash fields of a trunk
 * * What the chip hashes to choose a member for a frame.
 * @{
 */
#define USER_TRUNK_HASH_NONE 0u
#define USER_TRUNK_HASH_SOURCE_MAC 1u
#define USER_TRUNK_HASH_DESTINATION_MAC 2u
#define USER_TRUNK_HASH_MACS 3u
#define USER_TRUNK_HASH_SOURCE_IP 4u
#define USER_TRUNK_HASH_DESTINATION_IP 5u
#define USER_TRUNK_HASH_IPS 6u
/** @} */

/**
 * @brief Sets the fields that the chip hashes to choose a trunk member.
 *
 * Calls rtk_trunk_distributionAlgorithmParam_set(0, 0, bits): algorithm 0 of
 * unit 0, with the SDK's bits 2 (source MAC), 4 (destination MAC), 8 (source
 * IP) and 16 (destination IP).
 *
 * @param lead     ignored
 * @param unit     ignored
 * @param trunk    ignored: the fields are those of all trunks
 * @param selector one of USER_TRUNK_HASH_*; any other value counts as
 *                 ::USER_TRUNK_HASH_NONE
 * @return the SDK's result
 */
SWCTL_API int32_t user_trunk_loadbalance_set(uint32_t lead, uint32_t unit, uint32_t trunk,
                                             uint32_t selector);

/**
 * @brief Traps LACP frames (IEEE 802.1AX) to the CPU, or drops them.
 *
 * Calls rtk_trap_bypassStp_set(unit, 6, enable) with 1 or 0. Unless the result
 * is negative, it then calls rtk_trap_rmaGroupAction_set(unit, 1, action) with
 * 2 (trap) or 1 (drop). The frames are never forwarded.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param enable non-zero: trap to the CPU
 * @return the result of the last call
 */
SWCTL_API int32_t user_trunk_trap_lacp(uint32_t lead, uint32_t unit, uint32_t enable);

/**
 * @brief Traps OAM frames (IEEE 802.3 clause 57) to the CPU, or drops them.
 *
 * Calls rtk_trap_rmaGroupAction_set(unit, 0, action) with 2 (trap) or 1
 * (drop). The frames are never forwarded.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param enable non-zero: trap to the CPU
 * @return the SDK's result
 */
SWCTL_API int32_t user_eoam_trap_set(uint32_t lead, uint32_t unit, uint32_t enable);

SWCTL_END_DECLS

#endif
