/* SPDX-License-Identifier: MIT */
/**
 * @file port_read.h
 * @brief Reading settings of ports that the SDK only writes. Optional; the rules
 *        are in read.h.
 */
#ifndef SWCTL_PLATFORM_PORT_READ_H
#define SWCTL_PLATFORM_PORT_READ_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @brief Whether a half-duplex port collides on purpose while it is short of
 *        buffers.
 *
 * @param unit   switch unit
 * @param port   chip port
 * @param enable receives what rtk_port_backpressureEnable_set() was given
 * @return 0, or a result of the platform's own
 */
SWCTL_API int32_t swctl_platform_port_backpressure_get(uint32_t unit, int32_t port,
                                                       uint32_t *enable);

/**
 * @brief Whether a port refuses frames of VLANs that it is no member of.
 *
 * @param unit   switch unit
 * @param port   chip port
 * @param enable receives what rtk_vlan_portIgrFilter_set() was given
 * @return 0, or a result of the platform's own
 */
SWCTL_API int32_t swctl_platform_port_filter_get(uint32_t unit, int32_t port, uint32_t *enable);

SWCTL_END_DECLS

#endif
