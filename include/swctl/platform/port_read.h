/* SPDX-License-Identifier: MIT */
/**
 * @file port_read.h
 * @brief Reading settings of ports that the SDK only writes. Optional; read.h
 *        has the rules.
 */
#ifndef SWCTL_PLATFORM_PORT_READ_H
#define SWCTL_PLATFORM_PORT_READ_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @brief Reads whether a port's backpressure is on.
 *
 * @param unit   switch unit
 * @param port   chip port
 * @param enable receives the value last passed to
 *               rtk_port_backpressureEnable_set()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_port_backpressure_get(uint32_t unit, int32_t port,
                                                       uint32_t *enable);

/**
 * @brief Reads whether a port's VLAN ingress filter is on.
 *
 * @param unit   switch unit
 * @param port   chip port
 * @param enable receives the value last passed to rtk_vlan_portIgrFilter_set()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_port_filter_get(uint32_t unit, int32_t port, uint32_t *enable);

/**
 * @brief Reads whether a port is protected against denial-of-service attacks.
 *
 * @param unit   switch unit
 * @param port   chip port
 * @param enable receives the value last passed to
 *               rtk_sec_portAttackPreventEnable_set()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_port_protection_get(uint32_t unit, int32_t port, uint32_t *enable);

/**
 * @brief Reads an entry of the table of outer tag protocol identifiers.
 *
 * @param unit  switch unit
 * @param index entry
 * @param tpid  receives the value last passed to rtk_vlan_outerTpidEntry_set()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_outer_tpid_get(uint32_t unit, uint32_t index, uint32_t *tpid);

SWCTL_END_DECLS

#endif
