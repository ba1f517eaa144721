/* SPDX-License-Identifier: MIT */
/**
 * @file port_frame.h
 * @brief Ports: PVID, frame length, learning.
 *
 * Part of port.h. Its rules apply: the leading argument is ignored; the unit
 * and the chip's physical port go to the SDK unchanged.
 */
#ifndef SWCTL_PORT_FRAME_H
#define SWCTL_PORT_FRAME_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Generic learning modes
 * What a port does with frames from new source addresses. Each is a pair of
 * the SDK's: a learning mode and a forwarding action. The setter takes these;
 * any other mode is the pair (0, 0). The SDK gives its numbers no names; what
 * the pairs do to frames is this project's reading.
 * @{
 */
#define USER_LEARN_DISCARD 0u  /**< the pair (2, 1) */
#define USER_LEARN_FORWARD 18u /**< the pair (2, 0) */
#define USER_LEARN_TO_CPU 8u   /**< the pair (1, 2), unless the mode was 2 */
#define USER_LEARN_COPY_CPU 2u /**< the pair (0, 3), unless the mode was 1 or 2 */
#define USER_LEARN_RESTORE 16u /**< the saved pair */
/** The getter's answer for any SDK mode but 1 and 2. */
#define USER_LEARN_ON 1u
/** @} */

/**
 * @brief Reads a port's PVID, the VLAN of its untagged frames.
 *
 * Calls rtk_vlan_portPvid_get(unit, port, ...).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param vid  receives the low 16 bits of the SDK's VLAN ID; written whatever
 *             the result is, and 0 if the SDK wrote nothing
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_untagged_vlan_get(uint32_t lead, uint32_t unit, int32_t port,
                                              uint16_t *vid);

/**
 * @brief Sets a port's PVID, the VLAN of its untagged frames.
 *
 * Calls rtk_vlan_portPvid_set(unit, port, vid), then
 * rtk_vlan_portOuterPvid_set(unit, port, vid): the inner and the outer PVID
 * are set together.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param vid  VLAN ID; the low 16 bits count
 * @return the first result if it is negative, else the second
 */
SWCTL_API int32_t user_port_untagged_vlan_set(uint32_t lead, uint32_t unit, int32_t port,
                                              uint32_t vid);

/**
 * @brief Sets the maximum frame length of a unit.
 *
 * Calls rtk_switch_maxPktLenLinkSpeed_set(unit, 1, length), then the same for
 * speed class 0, whatever the first result is.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   ignored: the length is that of all ports
 * @param length in bytes, passed on unchanged
 * @return the bitwise OR of the two results
 */
SWCTL_API int32_t user_port_jumboframe_set(uint32_t lead, uint32_t unit, int32_t port,
                                           uint32_t length);

/**
 * @brief Reads the maximum frame length of a unit.
 *
 * Passes through to rtk_switch_maxPktLenLinkSpeed_get(unit, 1, length): speed
 * class 1 only.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   ignored
 * @param length passed to the SDK; receives bytes
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_jumboframe_get(uint32_t lead, uint32_t unit, int32_t port,
                                           uint32_t *length);

/**
 * @brief Sets what a port does with frames from new source addresses.
 *
 * ::USER_LEARN_RESTORE calls rtk_l2_newMacOp_set(0, port, ...) with the saved
 * pair. Every other mode first saves the port's present pair with
 * rtk_l2_newMacOp_get(unit, port, ...), ignoring its result. Then it calls
 * rtk_l2_newMacOp_set(0, port, ...) with the mode's pair, or writes nothing
 * where the list above says "unless". Reads go to the caller's unit, writes to
 * unit 0.
 *
 * There is one saved pair for the whole library: the one that the last call
 * with any mode but ::USER_LEARN_RESTORE found, on whatever port. It is (0, 0)
 * at load.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param mode generic learning mode
 * @return the result of the write; 0 if nothing is written
 */
SWCTL_API int32_t user_port_learn_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t mode);

/**
 * @brief Reads what a port does with frames from new source addresses.
 *
 * Calls rtk_l2_newMacOp_get(unit, port, ...).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param mode receives ::USER_LEARN_DISCARD for the SDK's mode 2,
 *             ::USER_LEARN_TO_CPU for mode 1 and ::USER_LEARN_ON for any
 *             other; written whatever the result is, as for mode 0 if the SDK
 *             wrote nothing
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_learn_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t *mode);

SWCTL_END_DECLS

#endif
