/* SPDX-License-Identifier: MIT */
/**
 * @file port_counter.h
 * @brief Ports: counters.
 *
 * Part of port.h, whose laws hold here: leading argument ignored, then the
 * unit, then the chip's physical port, passed to the SDK unchanged.
 */
#ifndef SWCTL_PORT_COUNTER_H
#define SWCTL_PORT_COUNTER_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Kinds of summed counters
 * @{
 */
#define USER_STAT_PACKETS 0   /**< SDK counters 1 + 2 + 3 */
#define USER_STAT_CHECKSUM 1  /**< SDK counter 45 */
#define USER_STAT_FRAGMENTS 2 /**< SDK counter 34 */
#define USER_STAT_ERRORS 3    /**< SDK counters 21 + 34 + 45 + 41 */
/** @} */

/**
 * @brief One counter of a port.
 *
 * Passes through to rtk_stat_port_get(unit, port, counter, value).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param counter the SDK's counter identifier
 * @param value  handed to the SDK; receives the counter
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_packetstat_get(uint32_t lead, uint32_t unit, int32_t port,
                                           uint32_t counter, user_counter_t *value);

/**
 * @brief Sets all counters of a port to 0.
 *
 * Calls rtk_stat_port_reset(unit, port), result ignored.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @return 0, always
 */
SWCTL_API int32_t user_port_packetstat_clear(uint32_t lead, uint32_t unit, int32_t port);

/**
 * @brief A summed counter of a port.
 *
 * Sets the value to 0 first. A kind with one SDK counter calls
 * rtk_stat_port_get(unit, port, counter, value). A kind with several calls it
 * for each, in the order shown above, and adds the readings as 64-bit numbers;
 * those results are ignored, and a call that writes nothing adds the reading
 * before it once more, 0 if there was none. Any other kind calls nothing.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param kind   USER_STAT_*
 * @param value  receives the sum; 0 for any other kind
 * @return the SDK's result for a kind with one counter, else 0
 */
SWCTL_API int32_t user_stat_port_get(uint32_t lead, uint32_t unit, int32_t port, int32_t kind,
                                     user_counter_t *value);

/**
 * @brief All counters of a port at once.
 *
 * Passes through to rtk_stat_port_getAll(unit, port, counters).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param counters handed to the SDK; receives its set of counters. The form
 *               and size of the set are the platform's; the virtual chip's is
 *               chip_port_counters_t in platform/port_records.h.
 * @return the SDK's result
 */
SWCTL_API int32_t user_stat_port_getAll(uint32_t lead, uint32_t unit, int32_t port, void *counters);

SWCTL_END_DECLS

#endif
