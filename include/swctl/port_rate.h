/* SPDX-License-Identifier: MIT */
/**
 * @file port_rate.h
 * @brief Ports: bandwidth limits and storm control.
 *
 * Part of port.h. Its rules apply: the leading argument is ignored; the unit
 * and the chip's physical port go to the SDK unchanged.
 */
#ifndef SWCTL_PORT_RATE_H
#define SWCTL_PORT_RATE_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** Types of traffic that storm control distinguishes, numbered from 0. */
#define USER_STORM_TYPES 5

/**
 * @brief Sets the egress rate limit of a port and switches it on.
 *
 * Calls rtk_rate_egrBandwidthCtrlEnable_set(unit, port, 1), ignoring its
 * result, then rtk_rate_egrBandwidthCtrlRate_set(unit, port, rate / 16). Every
 * rate switches the limit on, 0 too.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param rate in sixteenths of the SDK's unit; the division rounds toward 0
 * @return the result of the second call
 */
SWCTL_API int32_t user_port_egress_rate_set(uint32_t lead, uint32_t unit, int32_t port,
                                            int32_t rate);

/**
 * @brief Reads the egress rate limit of a port.
 *
 * Calls rtk_rate_egrBandwidthCtrlRate_get(unit, port, ...).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param rate receives 16 times the SDK's rate, modulo 2^32; written whatever
 *             the result is, with no meaning after a failure
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_egress_rate_get(uint32_t lead, uint32_t unit, int32_t port,
                                            int32_t *rate);

/**
 * @brief Sets the ingress rate limit of a port and switches it on.
 *
 * Like user_port_egress_rate_set(), with rtk_rate_igrBandwidthCtrlEnable_set()
 * and rtk_rate_igrBandwidthCtrlRate_set().
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param rate as in user_port_egress_rate_set()
 * @return the result of the second call
 */
SWCTL_API int32_t user_port_ingress_rate_set(uint32_t lead, uint32_t unit, int32_t port,
                                             int32_t rate);

/**
 * @brief Reads the ingress rate limit of a port.
 *
 * Like user_port_egress_rate_get(), with rtk_rate_igrBandwidthCtrlRate_get().
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param rate as in user_port_egress_rate_get()
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_ingress_rate_get(uint32_t lead, uint32_t unit, int32_t port,
                                             int32_t *rate);

/**
 * @brief Switches storm control of one type on a port on or off.
 *
 * Calls rtk_rate_stormControlEnable_set(unit, port, type, enable) with 1 for
 * any non-zero value.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param type   storm type, passed on unchanged
 * @param enable non-zero on, 0 off
 * @return -1, always, whether the call failed or not
 */
SWCTL_API int32_t user_rate_stormControlEnable_set(uint32_t lead, uint32_t unit, int32_t port,
                                                   uint32_t type, uint32_t enable);

/**
 * @brief Selects which traffic a storm type covers on a port.
 *
 * Calls rtk_rate_stormControlTypeSel_set(unit, port, type, selection) with 1
 * for any non-zero value.
 *
 * @param lead      ignored
 * @param unit      switch unit
 * @param port      chip port
 * @param type      storm type, passed on unchanged
 * @param selection 0 or non-zero
 * @return the SDK's result
 */
SWCTL_API int32_t user_rate_stormsel_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t type,
                                         uint32_t selection);

/**
 * @brief Reads which traffic a storm type covers on a port.
 *
 * Passes through to rtk_rate_stormControlTypeSel_get(unit, port, type,
 * selection).
 *
 * @param lead      ignored
 * @param unit      switch unit
 * @param port      chip port
 * @param type      storm type
 * @param selection passed to the SDK; receives 0 or 1
 * @return the SDK's result
 */
SWCTL_API int32_t user_rate_stormsel_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t type,
                                         uint32_t *selection);

/**
 * @brief Finds the first storm type whose rate was exceeded on a port.
 *
 * Calls rtk_rate_stormControlExceed_get(unit, port, type, ...) for the types 0
 * to 4, up to the first that was exceeded. The results are ignored; a call
 * that writes nothing counts as not exceeded.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param flag receives 1, or 0 if no type was exceeded
 * @param type receives the type if there is one; otherwise unchanged
 * @return 0, always
 */
SWCTL_API int32_t user_rate_stormExceedFlag_get(uint32_t lead, uint32_t unit, int32_t port,
                                                uint32_t *flag, uint32_t *type);

/**
 * @brief Clears the exceeded flags of all storm types of a port.
 *
 * Calls rtk_rate_stormControlExceed_reset(unit, port, type) for the types 0 to
 * 4, ignoring the results.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @return 0, always
 */
SWCTL_API int32_t user_rate_stormExceedFlag_reset(uint32_t lead, uint32_t unit, int32_t port);

/**
 * @brief Sets the rate of a storm type, and switches its control on or off.
 *
 * Calls rtk_rate_stormControlEnable_set(unit, port, type, enable) with 0 for a
 * rate of 0, else with 1, ignoring its result; then
 * rtk_rate_stormControlRate_set(unit, port, type, rate).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param type storm type, passed on unchanged
 * @param rate in the SDK's unit, passed on unchanged; 0 switches control off
 * @return the result of the second call
 */
SWCTL_API int32_t user_rate_bandwidth_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t type,
                                          uint32_t rate);

/**
 * @brief Reads the rate of a storm type, and whether its control is on.
 *
 * Calls rtk_rate_stormControlEnable_get(unit, port, type, enable), ignoring
 * its result, then rtk_rate_stormControlRate_get(unit, port, type, rate).
 *
 * If the count mode last set with user_rate_stormCountMode_set() is 1, the
 * rate is then multiplied by 16, modulo 2^32, whatever the result is: 16 times
 * what user_rate_bandwidth_set() wrote.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param type   storm type, passed on unchanged
 * @param rate   passed to the SDK; receives the rate. In count mode 1 it is
 *               multiplied even if the read failed, so set it before the call.
 * @param enable passed to the SDK; receives 1 or 0
 * @return the result of the second call
 */
SWCTL_API int32_t user_rate_bandwidth_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t type,
                                          uint32_t *rate, uint32_t *enable);

/**
 * @brief Sets what storm control counts, for a whole unit.
 *
 * Calls rtk_rate_stormControlRateMode_set(unit, mode) with the low 8 bits of
 * the mode. Any result but 0, a positive one too, ends the function. Otherwise
 * the library remembers the mode, one for all units. For mode 0 it then calls
 * rtk_rate_stormControlBurstSize_set(unit, type, 100) for the types 2, 3 and
 * 4, ignoring the results.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param mode count mode; the low 8 bits count
 * @return the result of the first call
 */
SWCTL_API int32_t user_rate_stormCountMode_set(uint32_t lead, uint32_t unit, uint32_t mode);

/**
 * @brief Reads from the chip what storm control counts.
 *
 * Calls rtk_rate_stormControlRateMode_get(unit, ...). Neither uses nor changes
 * the mode that user_rate_stormCountMode_set() remembers.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param mode one byte; receives the low 8 bits of the SDK's mode; written
 *             whatever the result is, and 0 if the SDK wrote nothing
 * @return the SDK's result
 */
SWCTL_API int32_t user_rate_stormCountMode_get(uint32_t lead, uint32_t unit, uint8_t *mode);

SWCTL_END_DECLS

#endif
