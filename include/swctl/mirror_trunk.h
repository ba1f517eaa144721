/* SPDX-License-Identifier: MIT */
/**
 * @file mirror_trunk.h
 * @brief Mirroring and trunk groups.
 *
 * The laws in frame.h hold throughout.
 */
#ifndef SWCTL_MIRROR_TRUNK_H
#define SWCTL_MIRROR_TRUNK_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0.
 * The sentence says what the call is for on a device that offers it.
 * @{
 */
/** Prepares mirroring. */
SWCTL_API int32_t user_mirror_init(uint32_t lead, ...);
/** Chooses how mirroring works: off, by port, by flow. */
SWCTL_API int32_t user_mirror_mode_set(uint32_t lead, ...);
/** How mirroring works. */
SWCTL_API int32_t user_mirror_mode_get(uint32_t lead, ...);
/** What is mirrored of a port. */
SWCTL_API int32_t user_mirror_port_get(uint32_t lead, ...);
/** Prepares trunking. */
SWCTL_API int32_t user_trunk_init(uint32_t lead, ...);
/** Makes a trunk with a certain number. */
SWCTL_API int32_t user_trunk_create_id(uint32_t lead, ...);
/** The trunk that a port belongs to. */
SWCTL_API int32_t user_trunk_port_get(uint32_t lead, ...);
/** Adds a port to a trunk. */
SWCTL_API int32_t user_trunk_port_add(uint32_t lead, ...);
/** Takes a port out of its trunk. */
SWCTL_API int32_t user_trunk_port_delete(uint32_t lead, ...);
/** Tells the kernel's switch module about the trunks. */
SWCTL_API int32_t user_trunk_send_data_to_kernel(uint32_t lead, ...);
/** @} */

/**
 * @name Mirror modes
 * What of a port is mirrored; any other value takes the port out.
 * @{
 */
#define USER_MIRROR_NONE 0u
#define USER_MIRROR_INGRESS 2u
#define USER_MIRROR_EGRESS 4u
#define USER_MIRROR_BOTH 6u
/** @} */

/**
 * @brief Adds a port to a mirror group, or takes it out.
 *
 * On unit 0, whatever the unit argument. Calls rtk_mirror_group_get(0, group,
 * &entry), result ignored (an entry that could not be read counts as zeros),
 * and rtk_mirror_group_set(0, group, &entry) after setting field 1 (enable) to
 * 1, field 2 to the mirroring port and field 7 to 1; field 12 to 1 if the port
 * is 28; and the port's bit in field 3 (ingress), field 4 (egress) or both, or
 * clearing it in both. Every other field, and the bits of other ports, stay.
 *
 * A group whose last port is taken out stays enabled:
 * user_check_set_mirror_disable() is for that.
 *
 * @param lead           ignored
 * @param unit           ignored
 * @param port           chip port that is mirrored, 0 to 31
 * @param group          mirror group; not checked
 * @param mirroring_port chip port that gets the copies; not checked
 * @param mode           one of USER_MIRROR_*
 * @return the result of the write
 */
SWCTL_API int32_t user_mirror_port_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t group,
                                       uint32_t mirroring_port, uint32_t mode);

/**
 * @brief Has a mirror group mirror the flows that rules choose.
 *
 * Reads and writes the group as user_mirror_port_set() does, setting field 1
 * (enable), field 7 and field 15 (flows) to 1 and field 2 to the mirroring
 * port. The masks of mirrored ports stay.
 *
 * @param lead           ignored
 * @param unit           ignored: unit 0
 * @param group          mirror group; not checked
 * @param mirroring_port chip port that gets the copies; not checked
 * @return the result of the write
 */
SWCTL_API int32_t user_set_flow_mirror(uint32_t lead, uint32_t unit, uint32_t group,
                                       uint32_t mirroring_port);

/**
 * @brief Disables a mirror group.
 *
 * Reads and writes the group as user_mirror_port_set() does, setting field 1
 * (enable) and field 2 (mirroring port) to 0. The masks of mirrored ports
 * stay: a group that is enabled again mirrors the same ports.
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
 * Calls rtk_mirror_group_get(0, group, &entry), result ignored. If both masks
 * are 0, it writes what user_set_mirror_disable() would write; otherwise it
 * changes nothing.
 *
 * @param lead  ignored
 * @param unit  ignored: unit 0
 * @param group mirror group; not checked
 * @return the result of the write; 0 if there was none
 */
SWCTL_API int32_t user_check_set_mirror_disable(uint32_t lead, uint32_t unit, uint32_t group);

/** Ports that a ::user_trunk_desc_t has room for. */
#define USER_TRUNK_PORTS 35

/**
 * @brief The members of a trunk, 40 bytes, passed by value.
 */
struct user_trunk_desc_t {
  int32_t count;                   /**< how many ports; 0 or less for none */
  uint8_t unused;                  /**< not read */
  uint8_t ports[USER_TRUNK_PORTS]; /**< chip ports, 0 to 31 */
};
typedef struct user_trunk_desc_t user_trunk_desc_t;

/**
 * @brief Gives a trunk its members.
 *
 * Calls rtk_trunk_port_set(0, trunk, &mask) on unit 0, with a bit per port.
 * The members replace those that the trunk had.
 *
 * @param lead        ignored
 * @param unit        ignored
 * @param trunk       trunk number; not checked
 * @param description the members; of a port number the low five bits count,
 *                    and of more than ::USER_TRUNK_PORTS ports the first
 * @return the SDK's result
 */
SWCTL_API int32_t user_trunk_set(uint32_t lead, uint32_t unit, uint32_t trunk,
                                 user_trunk_desc_t description);

/**
 * @brief Takes every member out of a trunk. The trunk stays, empty.
 *
 * Calls rtk_trunk_port_set(0, trunk, &mask) on unit 0, with an empty mask.
 *
 * @param lead  ignored
 * @param unit  ignored
 * @param trunk trunk number; not checked
 * @return the SDK's result
 */
SWCTL_API int32_t user_trunk_destroy(uint32_t lead, uint32_t unit, uint32_t trunk);

/**
 * @name What spreads frames over the members of a trunk
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
 * @brief Chooses the header fields that spread frames over trunk members.
 *
 * Calls rtk_trunk_distributionAlgorithmParam_set(0, 0, bits): algorithm 0 of
 * unit 0, with the SDK's bits 2 (source MAC), 4 (destination MAC), 8 (source
 * IP) and 16 (destination IP).
 *
 * @param lead     ignored
 * @param unit     ignored
 * @param trunk    ignored: the choice holds for all trunks
 * @param selector one of USER_TRUNK_HASH_*; any other value counts as
 *                 ::USER_TRUNK_HASH_NONE
 * @return the SDK's result
 */
SWCTL_API int32_t user_trunk_loadbalance_set(uint32_t lead, uint32_t unit, uint32_t trunk,
                                             uint32_t selector);

/**
 * @brief Gives LACP frames (IEEE 802.1AX) to the processor, or drops them.
 *
 * Calls rtk_trap_bypassStp_set(unit, 6, enable), with 1 or 0, and, unless its
 * result is negative, rtk_trap_rmaGroupAction_set(unit, 1, action): 2 (trap)
 * or 1 (drop). They are never switched.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param enable non-zero: to the processor
 * @return the result of the last call that was made
 */
SWCTL_API int32_t user_trunk_trap_lacp(uint32_t lead, uint32_t unit, uint32_t enable);

/**
 * @brief Gives OAM frames (IEEE 802.3 clause 57) to the processor, or drops
 *        them.
 *
 * Calls rtk_trap_rmaGroupAction_set(unit, 0, action): 2 (trap) or 1 (drop).
 * They are never switched.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param enable non-zero: to the processor
 * @return the SDK's result
 */
SWCTL_API int32_t user_eoam_trap_set(uint32_t lead, uint32_t unit, uint32_t enable);

SWCTL_END_DECLS

#endif
