/* SPDX-License-Identifier: MIT */
/**
 * @file port_rate.h
 * @brief Ports: bandwidth limits and storm control.
 *
 * Part of port.h, whose laws hold here: leading argument ignored, then the
 * unit, then the chip's physical port, passed to the SDK unchanged.
 */
#ifndef SWCTL_PORT_RATE_H
#define SWCTL_PORT_RATE_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** Types of flooded traffic that storm control tells apart, numbered from 0. */
#define USER_STORM_TYPES 5

/**
 * @brief Limits what a port sends.
 *
 * Calls rtk_rate_egrBandwidthCtrlEnable_set(unit, port, 1), result ignored,
 * then rtk_rate_egrBandwidthCtrlRate_set(unit, port, rate / 16). The limit is
 * switched on for every rate, 0 included.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param rate   16 of these are one of the SDK's; the division rounds towards
 *               zero
 * @return the result of the second call
 */
SWCTL_API int32_t user_port_egress_rate_set(uint32_t lead, uint32_t unit, int32_t port,
                                            int32_t rate);

/**
 * @brief Limit of what a port sends.
 *
 * Calls rtk_rate_egrBandwidthCtrlRate_get(unit, port, ...).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param rate   receives the SDK's rate times 16, modulo 2^32; written
 *               whatever the result, with no meaning after a failure
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_egress_rate_get(uint32_t lead, uint32_t unit, int32_t port,
                                            int32_t *rate);

/**
 * @brief Limits what a port takes in.
 *
 * As user_port_egress_rate_set(), with rtk_rate_igrBandwidthCtrlEnable_set()
 * and rtk_rate_igrBandwidthCtrlRate_set().
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param rate   as in user_port_egress_rate_set()
 * @return the result of the second call
 */
SWCTL_API int32_t user_port_ingress_rate_set(uint32_t lead, uint32_t unit, int32_t port,
                                             int32_t rate);

/**
 * @brief Limit of what a port takes in.
 *
 * As user_port_egress_rate_get(), with rtk_rate_igrBandwidthCtrlRate_get().
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param rate   as in user_port_egress_rate_get()
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_ingress_rate_get(uint32_t lead, uint32_t unit, int32_t port,
                                             int32_t *rate);

/**
 * @brief Switches storm control of one type of traffic on a port.
 *
 * Calls rtk_rate_stormControlEnable_set(unit, port, type, enable), enable
 * being 1 for any non-zero value.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param type   storm type, passed on unchanged
 * @param enable non-zero on, 0 off
 * @return -1, always: it says nothing about the call
 */
SWCTL_API int32_t user_rate_stormControlEnable_set(uint32_t lead, uint32_t unit, int32_t port,
                                                   uint32_t type, uint32_t enable);

/**
 * @brief Selects which traffic a storm type covers on a port.
 *
 * Calls rtk_rate_stormControlTypeSel_set(unit, port, type, selection),
 * selection being 1 for any non-zero value.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param type   storm type, passed on unchanged
 * @param selection 0 or non-zero
 * @return the SDK's result
 */
SWCTL_API int32_t user_rate_stormsel_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t type,
                                         uint32_t selection);

/**
 * @brief Which traffic a storm type covers on a port.
 *
 * Passes through to rtk_rate_stormControlTypeSel_get(unit, port, type,
 * selection).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param type   storm type
 * @param selection handed to the SDK; receives 0 or 1
 * @return the SDK's result
 */
SWCTL_API int32_t user_rate_stormsel_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t type,
                                         uint32_t *selection);

/**
 * @brief The first storm type whose rate was exceeded on a port.
 *
 * Calls rtk_rate_stormControlExceed_get(unit, port, type, ...) for the types 0
 * to 4 until one says so. A failing call counts as not exceeded unless it
 * wrote otherwise.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param flag   receives 1, or 0 if no type was exceeded
 * @param type   receives the type if there is one; otherwise untouched
 * @return 0, always
 */
SWCTL_API int32_t user_rate_stormExceedFlag_get(uint32_t lead, uint32_t unit, int32_t port,
                                                uint32_t *flag, uint32_t *type);

/**
 * @brief Takes back the exceeded flags of all storm types of a port.
 *
 * Calls rtk_rate_stormControlExceed_reset(unit, port, type) for the types 0 to
 * 4, results ignored.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @return 0, always
 */
SWCTL_API int32_t user_rate_stormExceedFlag_reset(uint32_t lead, uint32_t unit, int32_t port);

/**
 * @brief Sets the rate of a storm type and switches its control with it.
 *
 * Calls rtk_rate_stormControlEnable_set(unit, port, type, enable) with enable
 * 0 for a rate of 0, else 1, result ignored; then
 * rtk_rate_stormControlRate_set(unit, port, type, rate).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param type   storm type, passed on unchanged
 * @param rate   in the SDK's unit, passed on unchanged; 0 switches control off
 * @return the result of the second call
 */
SWCTL_API int32_t user_rate_bandwidth_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t type,
                                          uint32_t rate);

/**
 * @brief The rate of a storm type, and whether it is controlled.
 *
 * Calls rtk_rate_stormControlEnable_get(unit, port, type, enable), result
 * ignored, then rtk_rate_stormControlRate_get(unit, port, type, rate).
 *
 * While the count mode last set with user_rate_stormCountMode_set() is 1, the
 * rate is multiplied by 16 afterwards, modulo 2^32, whatever the result: it
 * then reads 16 times what user_rate_bandwidth_set() wrote.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param type   storm type, passed on unchanged
 * @param rate   handed to the SDK; receives the rate. In count mode 1 it is
 *               read after a failure too, so it should hold a value.
 * @param enable handed to the SDK; receives 1 or 0
 * @return the result of the second call
 */
SWCTL_API int32_t user_rate_bandwidth_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t type,
                                          uint32_t *rate, uint32_t *enable);

/**
 * @brief Sets what storm control counts, for a whole unit.
 *
 * Calls rtk_rate_stormControlRateMode_set(unit, mode) with the lowest 8 bits
 * of mode. If that does not answer 0, a positive result included, this is all.
 * Otherwise the mode is remembered, once for the whole library, and mode 0 is
 * followed by rtk_rate_stormControlBurstSize_set(unit, type, 100) for the
 * types 2, 3 and 4, results ignored.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param mode   count mode; bits 8 and up are ignored
 * @return the result of the first call
 */
SWCTL_API int32_t user_rate_stormCountMode_set(uint32_t lead, uint32_t unit, uint32_t mode);

/**
 * @brief What storm control counts, as the chip has it.
 *
 * Calls rtk_rate_stormControlRateMode_get(unit, ...). The remembered mode of
 * user_rate_stormCountMode_set() takes no part.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param mode   one byte; receives the lowest 8 bits of the SDK's mode,
 *               whatever the result, 0 if the SDK wrote none
 * @return the SDK's result
 */
SWCTL_API int32_t user_rate_stormCountMode_get(uint32_t lead, uint32_t unit, uint8_t *mode);

SWCTL_END_DECLS

#endif
