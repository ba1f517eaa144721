/* SPDX-License-Identifier: MIT */
/**
 * @file port_switch.h
 * @brief Attack prevention, EEE, frames to the CPU.
 *
 * Part of port.h. Its rules apply: the leading argument is ignored; the unit
 * and the chip's physical port go to the SDK unchanged.
 */
#ifndef SWCTL_PORT_SWITCH_H
#define SWCTL_PORT_SWITCH_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @brief Switches attack prevention on for every front port.
 *
 * Calls rtk_sec_portAttackPreventEnable_set(unit, port, 1) for the chip ports
 * of the logical interfaces 1 to ::USER_FRONT_INTERFACES in this order, and
 * stops at the first negative result.
 *
 * @param lead ignored
 * @param unit switch unit
 * @return 0, or the negative result
 */
SWCTL_API int32_t user_dos_attack_prevent_init(uint32_t lead, uint32_t unit);

/**
 * @brief Sets what becomes of the frames of an attack.
 *
 * Calls rtk_sec_attackPreventAction_set(unit, type, action) with 1 for any
 * non-zero value.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param type   the SDK's attack type
 * @param action 0 or non-zero
 * @return the SDK's result
 */
SWCTL_API int32_t user_dos_attack_prevent_action_set(uint32_t lead, uint32_t unit, uint32_t type,
                                                     uint32_t action);

/**
 * @brief Reads what becomes of the frames of an attack, on unit 0.
 *
 * Calls rtk_sec_attackPreventAction_get(0, type, ...), on unit 0 whatever the
 * unit argument is, unlike user_dos_attack_prevent_action_set().
 *
 * @param lead   ignored
 * @param unit   ignored
 * @param type   the SDK's attack type
 * @param action receives 0, or 1 for any other value; unchanged on failure
 * @return the SDK's result if it is negative, else 0
 */
SWCTL_API int32_t user_dos_attack_prevent_action_get(uint32_t lead, uint32_t unit, uint32_t type,
                                                     uint32_t *action);

/**
 * @brief Switches a port's Energy-Efficient Ethernet (EEE, IEEE 802.3 clause
 *        78) on or off.
 *
 * Passes through to rtk_eee_portEnable_set(unit, port, enable).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable 1 on, 0 off
 * @return the SDK's result
 */
SWCTL_API int32_t user_eee_portEnable_set(uint32_t lead, uint32_t unit, int32_t port,
                                          uint32_t enable);

/**
 * @brief Reads whether a port's Energy-Efficient Ethernet is on.
 *
 * Passes through to rtk_eee_portEnable_get(unit, port, enable).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable passed to the SDK; receives 1 for on, 0 for off
 * @return the SDK's result
 */
SWCTL_API int32_t user_eee_portEnable_get(uint32_t lead, uint32_t unit, int32_t port,
                                          uint32_t *enable);

/**
 * @brief Sets the format of the frames that the chip passes to the CPU.
 *
 * Passes through to rtk_switch_pkt2CpuTypeFormat_set(unit, type, format).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param type   the SDK's type of frame
 * @param format the SDK's format
 * @return the SDK's result
 */
SWCTL_API int32_t user_switch_pkt2CpuTypeFormat_set(uint32_t lead, uint32_t unit, uint32_t type,
                                                    uint32_t format);

SWCTL_END_DECLS

#endif
