/* SPDX-License-Identifier: MIT */
/**
 * @file port_negotiation.h
 * @brief Ports: admin state, autonegotiation, pause, MDI/MDI-X.
 *
 * Part of port.h. Its rules apply: the leading argument is ignored; the unit
 * and the chip's physical port go to the SDK unchanged.
 */
#ifndef SWCTL_PORT_NEGOTIATION_H
#define SWCTL_PORT_NEGOTIATION_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name MDI/MDI-X modes
 * Which pairs a copper port sends on. The SDK has the same three values and
 * gives them no names; which is which is this project's reading.
 * @{
 */
#define USER_MDIX_AUTO 0u
#define USER_MDIX_STRAIGHT 1u
#define USER_MDIX_CROSSED 2u
/** @} */

/**
 * @brief Enables or disables a port.
 *
 * Passes through to rtk_port_adminEnable_set(unit, port, enable).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable 1 on, 0 off
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_enable_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t enable);

/**
 * @brief Reads whether a port is enabled.
 *
 * Passes through to rtk_port_adminEnable_get(unit, port, enable).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable passed to the SDK; receives 1 for on, 0 for off
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_enable_get(uint32_t lead, uint32_t unit, int32_t port,
                                       uint32_t *enable);

/**
 * @brief Switches backpressure, the flow control of half duplex, on or off.
 *
 * Passes through to rtk_port_backpressureEnable_set(unit, port, enable).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable 1 on, 0 off
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_backpressure_set(uint32_t lead, uint32_t unit, int32_t port,
                                             uint32_t enable);

/**
 * @brief Switches a port's autonegotiation on or off.
 *
 * Passes through to rtk_port_phyAutoNegoEnable_set(unit, port, enable).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable 1 on; 0 off: the port uses its forced mode
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_autoneg_set(uint32_t lead, uint32_t unit, int32_t port,
                                        uint32_t enable);

/**
 * @brief Reads whether a port's autonegotiation is on.
 *
 * Passes through to rtk_port_phyAutoNegoEnable_get(unit, port, enable).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable passed to the SDK; receives non-zero for on, 0 for off
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_autoneg_get(uint32_t lead, uint32_t unit, int32_t port,
                                        uint32_t *enable);

/**
 * @brief Reads the MDI/MDI-X mode of a copper port.
 *
 * Passes through to rtk_port_phyCrossOverMode_get(unit, port, mode).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param mode passed to the SDK; receives its mode
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_mdix_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t *mode);

/**
 * @brief Sets the MDI/MDI-X mode of a copper port.
 *
 * Calls rtk_port_phyCrossOverMode_set(unit, port, mode) for one of the three
 * modes.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param mode ::USER_MDIX_AUTO, ::USER_MDIX_STRAIGHT, ::USER_MDIX_CROSSED
 * @return the SDK's result; -1 without a call for any other mode
 */
SWCTL_API int32_t user_port_mdix_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t mode);

/**
 * @brief Sets the abilities that a port advertises.
 *
 * Passes through to rtk_port_phyAutoNegoAbility_set(unit, port, ability).
 *
 * @param lead    ignored
 * @param unit    switch unit
 * @param port    chip port
 * @param ability the advertised-ability word, USER_ABILITY_*; passed to the
 *                SDK, which reads it
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_ability_advert_set(uint32_t lead, uint32_t unit, int32_t port,
                                               const uint32_t *ability);

/**
 * @brief Reads the abilities that a port advertises.
 *
 * Passes through to rtk_port_phyAutoNegoAbility_get(unit, port, ability), on
 * the caller's unit.
 *
 * @param lead    ignored
 * @param unit    switch unit
 * @param port    chip port
 * @param ability passed to the SDK; receives the advertised-ability word
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_ability_advert_get(uint32_t lead, uint32_t unit, int32_t port,
                                               uint32_t *ability);

/**
 * @brief Switches a port's flow control (IEEE 802.3 annex 31B) on or off.
 *
 * Calls rtk_port_flowCtrlEnable_set(unit, port, enable). A negative result
 * prints "set flowcontorl failed !!!" with a line end.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable 1 on, 0 off; passed on unchanged
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_pause_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t enable);

/**
 * @brief Reads the configured flow control of a port.
 *
 * Calls rtk_port_phyAutoNegoEnable_get(unit, port, ...). If autonegotiation is
 * on, it calls rtk_port_phyAutoNegoAbility_get(0, port, ...), on unit 0
 * whatever the unit argument is; pause is on if both ::USER_ABILITY_PAUSE and
 * ::USER_ABILITY_ASYMMETRIC_PAUSE are advertised. If autonegotiation is off,
 * it calls rtk_port_phyForceModeAbility_get(unit, port, ...) and returns the
 * forced flow control.
 *
 * A failed read prints "rtk get error[%d]\n" with its result. A failed ability
 * read prints "user_port_pause_get:get port autonego ability failed\n" to
 * standard error instead.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param port  chip port
 * @param pause receives 1 or 0, or the forced flow control as the SDK has it;
 *              unchanged on failure
 * @return the result of the last SDK call, the first negative one included
 */
SWCTL_API int32_t user_port_pause_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t *pause);

/**
 * @brief Reads the operational flow control of a port.
 *
 * Reads the state of both directions with rtk_port_flowctrl_get(unit, port,
 * ...). Prints "rtk get error[%d]\n" with a negative result.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param port  chip port
 * @param pause receives the bitwise AND of the two states: 1 only if both
 *              directions are on; unchanged on failure
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_pause_get_stat(uint32_t lead, uint32_t unit, int32_t port,
                                           uint32_t *pause);

SWCTL_END_DECLS

#endif
