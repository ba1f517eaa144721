/* SPDX-License-Identifier: MIT */
/**
 * @file port_negotiation.h
 * @brief Ports: switching on and off, autonegotiation, pause, crossover.
 *
 * Part of port.h, whose laws hold here: leading argument ignored, then the
 * unit, then the chip's physical port, passed to the SDK unchanged.
 */
#ifndef SWCTL_PORT_NEGOTIATION_H
#define SWCTL_PORT_NEGOTIATION_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Crossover modes
 * Which pairs a copper port sends on. The three values are the SDK's too.
 * @{
 */
#define USER_MDIX_AUTO 0u
#define USER_MDIX_STRAIGHT 1u
#define USER_MDIX_CROSSED 2u
/** @} */

/**
 * @brief Switches a port on or off.
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
 * @brief Whether a port is switched on.
 *
 * Passes through to rtk_port_adminEnable_get(unit, port, enable).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable handed to the SDK; receives 1 for on, 0 for off
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_enable_get(uint32_t lead, uint32_t unit, int32_t port,
                                       uint32_t *enable);

/**
 * @brief Switches back-pressure: collisions on purpose in half duplex.
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
 * @brief Switches a port's autonegotiation.
 *
 * Passes through to rtk_port_phyAutoNegoEnable_set(unit, port, enable).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable 1 on, 0 off: the port then runs in its forced mode
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_autoneg_set(uint32_t lead, uint32_t unit, int32_t port,
                                        uint32_t enable);

/**
 * @brief Whether a port negotiates.
 *
 * Passes through to rtk_port_phyAutoNegoEnable_get(unit, port, enable).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable handed to the SDK; receives non-zero for on, 0 for off
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_autoneg_get(uint32_t lead, uint32_t unit, int32_t port,
                                        uint32_t *enable);

/**
 * @brief Crossover mode of a copper port.
 *
 * Passes through to rtk_port_phyCrossOverMode_get(unit, port, mode).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param mode   handed to the SDK; receives its crossover mode
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_mdix_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t *mode);

/**
 * @brief Sets the crossover mode of a copper port.
 *
 * Calls rtk_port_phyCrossOverMode_set(unit, port, mode) for the three modes
 * that there are, and nothing for any other.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param mode   ::USER_MDIX_AUTO, ::USER_MDIX_STRAIGHT, ::USER_MDIX_CROSSED
 * @return the SDK's result; -1 for any other mode
 */
SWCTL_API int32_t user_port_mdix_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t mode);

/**
 * @brief Sets what a port advertises.
 *
 * Passes through to rtk_port_phyAutoNegoAbility_set(unit, port, ability).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param ability the advertised-ability word, USER_ABILITY_*; handed to the
 *               SDK, which reads it
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_ability_advert_set(uint32_t lead, uint32_t unit, int32_t port,
                                               const uint32_t *ability);

/**
 * @brief What a port advertises.
 *
 * Passes through to rtk_port_phyAutoNegoAbility_get(unit, port, ability), on
 * the caller's unit.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param ability handed to the SDK; receives the advertised-ability word
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_ability_advert_get(uint32_t lead, uint32_t unit, int32_t port,
                                               uint32_t *ability);

/**
 * @brief Switches a port's flow control (IEEE 802.3 annex 31B).
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
 * @brief Flow control as it is configured.
 *
 * Calls rtk_port_phyAutoNegoEnable_get(unit, port, ...). With autonegotiation
 * on it calls rtk_port_phyAutoNegoAbility_get(0, port, ...), on unit 0
 * whatever the unit argument: pause is on if both ::USER_ABILITY_PAUSE and
 * ::USER_ABILITY_ASYMMETRIC_PAUSE are advertised. With autonegotiation off it
 * calls rtk_port_phyForceModeAbility_get(unit, port, ...) and hands over the
 * forced flow control.
 *
 * A failing read prints "rtk get error[%d]\n" with its result; a failing
 * ability read prints "user_port_pause_get:get port autonego ability
 * failed\n" to standard error instead.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param pause  receives 1 or 0, or the forced flow control as the SDK has it;
 *               untouched on failure
 * @return the result of the last SDK call, the first negative one included
 */
SWCTL_API int32_t user_port_pause_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t *pause);

/**
 * @brief Flow control in operation.
 *
 * Calls rtk_port_flowctrl_get(unit, port, ...) for the two directions. A
 * negative result prints "rtk get error[%d]\n" with it.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param pause  receives the bitwise AND of the two words, so 1 only if both
 *               directions are on; untouched on failure
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_pause_get_stat(uint32_t lead, uint32_t unit, int32_t port,
                                           uint32_t *pause);

SWCTL_END_DECLS

#endif
