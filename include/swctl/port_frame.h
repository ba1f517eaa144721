/* SPDX-License-Identifier: MIT */
/**
 * @file port_frame.h
 * @brief Ports: default VLAN, frame length, learning.
 *
 * Part of port.h, whose laws hold here: leading argument ignored, then the
 * unit, then the chip's physical port, passed to the SDK unchanged.
 */
#ifndef SWCTL_PORT_FRAME_H
#define SWCTL_PORT_FRAME_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Generic learning modes
 * What a port does about new source addresses. The setter takes these; every
 * other mode stands for the pair (0, 0).
 * @{
 */
#define USER_LEARN_DISCARD 0u  /**< the pair (2, 1) */
#define USER_LEARN_FORWARD 18u /**< the pair (2, 0) */
#define USER_LEARN_TO_CPU 8u   /**< the pair (1, 2), unless the mode was 2 */
#define USER_LEARN_COPY_CPU 2u /**< the pair (0, 3), unless the mode was 1 or 2 */
#define USER_LEARN_RESTORE 16u /**< the pair that was there before */
/** What the getter answers for every SDK mode but 1 (8) and 2 (0). */
#define USER_LEARN_ON 1u
/** @} */

/**
 * @brief VLAN of the untagged frames that a port takes in.
 *
 * Calls rtk_vlan_portPvid_get(unit, port, ...).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param vid    receives the lowest 16 bits of the SDK's VLAN, whatever the
 *               result, 0 if the SDK wrote none
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_untagged_vlan_get(uint32_t lead, uint32_t unit, int32_t port,
                                              uint16_t *vid);

/**
 * @brief Sets the VLAN of the untagged frames that a port takes in.
 *
 * Calls rtk_vlan_portPvid_set(unit, port, vid) and then
 * rtk_vlan_portOuterPvid_set(unit, port, vid): the inner and the outer default
 * VLAN are set together.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param vid    VLAN; bits 16 and up are ignored
 * @return the first result if negative, else the second
 */
SWCTL_API int32_t user_port_untagged_vlan_set(uint32_t lead, uint32_t unit, int32_t port,
                                              uint32_t vid);

/**
 * @brief Sets the longest frame that a unit's ports take.
 *
 * Calls rtk_switch_maxPktLenLinkSpeed_set(unit, 1, length), then the same for
 * speed class 0, whatever the first answered.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   ignored: the length holds for all ports
 * @param length in bytes, passed on unchanged
 * @return the bitwise OR of the two results
 */
SWCTL_API int32_t user_port_jumboframe_set(uint32_t lead, uint32_t unit, int32_t port,
                                           uint32_t length);

/**
 * @brief The longest frame that a unit's ports take.
 *
 * Passes through to rtk_switch_maxPktLenLinkSpeed_get(unit, 1, length): speed
 * class 1 only.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   ignored
 * @param length handed to the SDK; receives bytes
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_jumboframe_get(uint32_t lead, uint32_t unit, int32_t port,
                                           uint32_t *length);

/**
 * @brief Sets what a port does about new source addresses.
 *
 * ::USER_LEARN_RESTORE calls rtk_l2_newMacOp_set(0, port, ...) with the saved
 * pair. Every other mode first saves the port's present pair, with
 * rtk_l2_newMacOp_get(unit, port, ...), result ignored, and then calls
 * rtk_l2_newMacOp_set(0, port, ...) with the mode's pair, or nothing where the
 * saved pair forbids it. Reads go to the caller's unit, writes to unit 0.
 *
 * There is one saved pair for the whole library, that of the last call with
 * another mode than ::USER_LEARN_RESTORE, whatever its port; at first (0, 0).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param mode   generic learning mode
 * @return the SDK's result of the write; 0 where nothing is written
 */
SWCTL_API int32_t user_port_learn_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t mode);

/**
 * @brief What a port does about new source addresses.
 *
 * Calls rtk_l2_newMacOp_get(unit, port, ...).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param mode   receives ::USER_LEARN_DISCARD for the SDK's mode 2,
 *               ::USER_LEARN_TO_CPU for 1, ::USER_LEARN_ON for any other,
 *               whatever the result; the mode counts as 0 if the SDK wrote none
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_learn_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t *mode);

SWCTL_END_DECLS

#endif
