/* SPDX-License-Identifier: MIT */
/**
 * @file port.h
 * @brief Ports: link, medium, loopback, speed and duplex.
 *
 * The other port functions are in the headers that this one includes.
 *
 * The rules in frame.h apply. The leading argument is ignored; the unit and
 * the chip's physical port go to the SDK unchanged. No range is checked here;
 * the SDK refuses what it does not have.
 */
#ifndef SWCTL_PORT_H
#define SWCTL_PORT_H

#include <swctl/port_cable.h>
#include <swctl/port_counter.h>
#include <swctl/port_fixed.h>
#include <swctl/port_flood.h>
#include <swctl/port_frame.h>
#include <swctl/port_negotiation.h>
#include <swctl/port_rate.h>
#include <swctl/port_switch.h>
#include <swctl/port_tag.h>
#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Link states
 * @{
 */
#define USER_LINK_DOWN 0u
#define USER_LINK_UP 1u
/** @} */

/**
 * @name Generic speed
 * What callers pass and receive, in Mbit/s. When read, an SDK code for none of
 * the four speeds becomes ::USER_SPEED_UNKNOWN. Any other value is written as
 * SDK code 4.
 * @{
 */
#define USER_SPEED_10 10u
#define USER_SPEED_100 100u
#define USER_SPEED_1000 1000u
#define USER_SPEED_10000 10000u
/** No single speed, or one that the generic interface does not know. */
#define USER_SPEED_UNKNOWN 4u
/** @} */

/**
 * @name Generic duplex
 * @{
 */
#define USER_DUPLEX_HALF 0u
#define USER_DUPLEX_FULL 1u
/** Both or neither advertised; only derived from advertised abilities. */
#define USER_DUPLEX_BOTH 2u
/** @} */

/**
 * @name Advertised-ability word
 * The abilities that a port advertises in autonegotiation (IEEE 802.3 clauses
 * 28 and 40). Bits without a name are reserved.
 * @{
 */
#define USER_ABILITY_10_HALF 0x80000000u
#define USER_ABILITY_10_FULL 0x40000000u
#define USER_ABILITY_100_HALF 0x20000000u
#define USER_ABILITY_100_FULL 0x10000000u
#define USER_ABILITY_1000_HALF 0x08000000u
#define USER_ABILITY_1000_FULL 0x04000000u
#define USER_ABILITY_PAUSE 0x02000000u
#define USER_ABILITY_ASYMMETRIC_PAUSE 0x01000000u
/** @} */

/** Medium of a combo port that uses its fibre side. */
#define USER_MEDIUM_FIBRE 1u

/**
 * @brief Programs the fixed port defaults of a unit.
 *
 * Makes these calls in this order, ignoring their results:
 * rtk_switch_maxPktLenTagLenCntIncEnable_set(unit, 0),
 * rtk_rate_stormControlRateMode_set(unit, 0), and
 * rtk_rate_stormControlBurstSize_set(unit, type, 100) for types 2, 3 and 4.
 *
 * @param lead ignored
 * @param unit switch unit
 * @return 0, always
 */
SWCTL_API int32_t user_port_init(uint32_t lead, uint32_t unit);

/**
 * @brief Reads the medium that a combo port uses.
 *
 * Calls rtk_port_phyComboPortMedia_get(unit, port, ...).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param medium receives the SDK's medium, ::USER_MEDIUM_FIBRE or another
 *               value; written whatever the result is, and 0 if the SDK wrote
 *               nothing
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_media_type_get(uint32_t lead, uint32_t unit, int32_t port,
                                           uint32_t *medium);

/**
 * @brief The same as user_port_media_type_get(), under another name.
 *
 * user_port_link_status_get() reads the medium by this name.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param medium as in user_port_media_type_get()
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_link_medium_get(uint32_t lead, uint32_t unit, int32_t port,
                                            uint32_t *medium);

/**
 * @brief Reads the link state as the SDK reports it, whatever the medium.
 *
 * Passes through to rtk_port_link_get(unit, port, status).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param status passed to the SDK; receives ::USER_LINK_UP or ::USER_LINK_DOWN
 * @return the SDK's result
 */
SWCTL_API int32_t user_fiberport_link_status_get(uint32_t lead, uint32_t unit, int32_t port,
                                                 uint32_t *status);

/**
 * @brief Reads the link state; a fibre port is up only if it is enabled.
 *
 * Calls rtk_port_link_get(unit, port, status), then
 * user_port_link_medium_get(lead, unit, port, ...) even if the first call
 * failed. If the medium could be read and is ::USER_MEDIUM_FIBRE, and the
 * status is not 0, it calls rtk_port_adminEnable_get(unit, port, ...) and
 * replaces the status with the administrative state; if that read fails, the
 * status stays as it is.
 *
 * @param lead   ignored here, passed on to user_port_link_medium_get()
 * @param unit   switch unit
 * @param port   chip port
 * @param status passed to the SDK; receives ::USER_LINK_UP or
 *               ::USER_LINK_DOWN. It is read even if the link could not be
 *               read, so set it before the call.
 * @return the result of rtk_port_link_get(), always
 */
SWCTL_API int32_t user_port_link_status_get(uint32_t lead, uint32_t unit, int32_t port,
                                            uint32_t *status);

/**
 * @brief Reads whether a port's MAC loops its frames back.
 *
 * Passes through to rtk_diag_portMacLocalLoopbackEnable_get(unit, port,
 * enable).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable passed to the SDK; receives 1 for on, 0 for off
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_loopback_get(uint32_t lead, uint32_t unit, int32_t port,
                                         uint32_t *enable);

/**
 * @brief Switches the local loopback of a port's MAC on or off.
 *
 * Passes through to rtk_diag_portMacLocalLoopbackEnable_set(unit, port,
 * enable).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable 1 on, 0 off
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_loopback_set(uint32_t lead, uint32_t unit, int32_t port,
                                         uint32_t enable);

/**
 * @brief Reads the highest speed of a port.
 *
 * Makes no SDK call.
 *
 * @param lead  ignored
 * @param unit  ignored
 * @param port  ignored
 * @param speed receives ::USER_SPEED_1000
 * @return 0, always
 */
SWCTL_API int32_t user_port_speed_max(uint32_t lead, uint32_t unit, int32_t port, uint32_t *speed);

/**
 * @brief Reads the speed of a port: operational, forced or advertised.
 *
 * Calls rtk_port_link_get(unit, port, ...). If the link is up (1), it then
 * calls rtk_port_speedDuplex_get(unit, port, speed, ...). Otherwise it calls
 * rtk_port_phyAutoNegoEnable_get(unit, port, ...) and, if autonegotiation is
 * off, rtk_port_phyForceModeAbility_get(unit, port, speed, ...). The SDK's
 * code is translated to the generic speed.
 *
 * If the link is down and autonegotiation is on, it calls
 * rtk_port_phyAutoNegoAbility_get(0, port, ...), on unit 0 whatever the unit
 * argument is, and derives the speed from the advertised abilities. 10 Mbit/s
 * modes without 100 Mbit/s modes give 10; 100 Mbit/s modes without 10 Mbit/s
 * modes give 100; with neither, 1000 full duplex gives 1000. Anything else
 * gives ::USER_SPEED_UNKNOWN, 1000 half duplex alone included.
 *
 * A failed SDK read prints "rtk get error[%d]\n" with its result. A failed
 * ability read prints "user_port_speed_get:get port autonego ability failed\n"
 * to standard error instead.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param port  chip port
 * @param speed receives the generic speed. Passed to the SDK in the first two
 *              cases; if such a read fails, it holds what the SDK left there.
 *              Unchanged if an earlier read or the ability read fails.
 * @return the result of the last SDK call, the first negative one included
 */
SWCTL_API int32_t user_port_speed_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t *speed);

/**
 * @brief Forces a port's speed and duplex, and keeps its flow control.
 *
 * Calls rtk_port_phyAutoNegoEnable_get(unit, port, ...). If autonegotiation is
 * off, the flow control to keep comes from
 * rtk_port_phyForceModeAbility_get(unit, port, ...). If it is on, it is the
 * pause bit of rtk_port_phyAutoNegoAbility_get(unit, port, ...); if that
 * ability read fails, flow control is taken as off and the function goes on.
 * Then it calls rtk_port_phyAutoNegoEnable_set(unit, port, 0) and
 * rtk_port_phyForceModeAbility_set(unit, port, code, duplex, flow control).
 *
 * If one of the first two reads fails, prints "rtk get error[%d]\n". If
 * autonegotiation cannot be switched off, returns the result and prints
 * nothing.
 *
 * The arguments deliberately differ from those of user_port_duplex_set(): the
 * speed is generic and translated, the duplex is the SDK's.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param speed  generic speed; any value but 10, 100, 1000 and 10000 is
 *               written as SDK code 4
 * @param duplex SDK duplex value (0 half, 1 full), passed on unchanged
 * @return the result of the last SDK call, the first negative one included
 *         (but not that of the ability read)
 */
SWCTL_API int32_t user_port_speed_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t speed,
                                      uint32_t duplex);

/**
 * @brief Reads the duplex of a port: operational, forced or advertised.
 *
 * Makes the same calls in the same order as user_port_speed_get(), the ability
 * read on unit 0 included. An operational or forced duplex is the SDK's,
 * unchanged. From advertised abilities: half duplex only, at 10 or 100 Mbit/s,
 * gives ::USER_DUPLEX_HALF; full duplex only gives ::USER_DUPLEX_FULL; both or
 * neither give ::USER_DUPLEX_BOTH. 1000 half duplex does not count.
 *
 * Prints what user_port_speed_get() prints, with its own name.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param duplex receives the generic duplex; otherwise like `speed` of
 *               user_port_speed_get()
 * @return the result of the last SDK call, the first negative one included
 */
SWCTL_API int32_t user_port_duplex_get(uint32_t lead, uint32_t unit, int32_t port,
                                       uint32_t *duplex);

/**
 * @brief Forces a port's duplex and speed, and keeps its flow control.
 *
 * Makes the same calls as user_port_speed_set(), with two differences: if
 * autonegotiation cannot be switched off, it prints "set port autonego enable
 * failed!!!" with a line end; and the speed is the SDK's code, passed on
 * unchanged.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param duplex SDK duplex value (0 half, 1 full), passed on unchanged
 * @param speed  SDK speed code (0, 1, 2, 3 for 10, 100, 1000, 10000 Mbit/s),
 *               passed on unchanged
 * @return the result of the last SDK call, the first negative one included
 *         (but not that of the ability read)
 */
SWCTL_API int32_t user_port_duplex_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t duplex,
                                       uint32_t speed);

SWCTL_END_DECLS

#endif
