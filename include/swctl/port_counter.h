/* SPDX-License-Identifier: MIT */
/**
 * @file port_counter.h
 * @brief Ports: counters.
 *
 * Part of port.h. Its rules apply: the leading argument is ignored; the unit
 * and the chip's physical port go to the SDK unchanged.
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
 * @brief Reads one counter of a port.
 *
 * Passes through to rtk_stat_port_get(unit, port, counter, value).
 *
 * @param lead    ignored
 * @param unit    switch unit
 * @param port    chip port
 * @param counter the SDK's counter identifier
 * @param value   passed to the SDK; receives the counter
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_packetstat_get(uint32_t lead, uint32_t unit, int32_t port,
                                           uint32_t counter, user_counter_t *value);

/**
 * @brief Sets all counters of a port to 0.
 *
 * Calls rtk_stat_port_reset(unit, port), ignoring its result.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @return 0, always
 */
SWCTL_API int32_t user_port_packetstat_clear(uint32_t lead, uint32_t unit, int32_t port);

/**
 * @brief Reads a sum of a port's counters.
 *
 * Sets the value to 0 first. For a kind with one SDK counter, calls
 * rtk_stat_port_get(unit, port, counter, value). For a kind with several,
 * calls it for each in the order given above and adds the readings as 64-bit
 * numbers. The results of these calls are ignored: a call that fails and
 * writes nothing adds the previous reading again, or 0 if it was the first.
 * For any other kind, calls nothing.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param port  chip port
 * @param kind  USER_STAT_*
 * @param value receives the sum; 0 for any other kind
 * @return the SDK's result for a kind with one counter, else 0
 */
SWCTL_API int32_t user_stat_port_get(uint32_t lead, uint32_t unit, int32_t port, int32_t kind,
                                     user_counter_t *value);

/**
 * @brief Reads all counters of a port at once.
 *
 * Passes through to rtk_stat_port_getAll(unit, port, counters).
 *
 * @param lead     ignored
 * @param unit     switch unit
 * @param port     chip port
 * @param counters passed to the SDK; receives its set of counters. The form
 *                 and size of the set are the platform's; the virtual chip's
 *                 is a ::chip_port_counters_t (platform/port_records.h).
 * @return the SDK's result
 */
SWCTL_API int32_t user_stat_port_getAll(uint32_t lead, uint32_t unit, int32_t port, void *counters);

SWCTL_END_DECLS

#endif
