/* SPDX-License-Identifier: MIT */
/**
 * @file port_flood.h
 * @brief Ports: egress masks, flooding, the VLAN ingress filter.
 *
 * Part of port.h, whose laws hold here: leading argument ignored, then the
 * unit, then the chip's physical port, passed to the SDK unchanged.
 */
#ifndef SWCTL_PORT_FLOOD_H
#define SWCTL_PORT_FLOOD_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @brief Sets the ports that a port may send to.
 *
 * Calls rtk_port_isolation_set(unit, port, mask) with the first word of the
 * bitmap.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param ignored not read
 * @param ports  bitmap of chip ports, by value; ports from 32 on are left out
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_egress_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t ignored,
                                       user_pbmp_t ports);

/**
 * @brief The ports that a port may send to.
 *
 * Calls rtk_port_isolation_get(unit, port, ...).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param ignored not read
 * @param ports  receives a bitmap of chip ports, words 1 to 7 being 0;
 *               untouched on failure
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_egress_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t ignored,
                                       user_pbmp_t *ports);

/**
 * @brief Sets the ports that receive frames to unknown unicast addresses.
 *
 * Calls rtk_l2_lookupMissFloodPortMaskIdx_get(unit, 2, ...) for the index that
 * lookup misses of type 2 use, then
 * rtk_l2_lookupMissFloodPortMask_set_with_idx(unit, 2, index, ...) with the
 * first word of the bitmap.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param ports  bitmap of chip ports, by value; ports from 32 on are left out
 * @return the result of the last SDK call, the first negative one included
 */
SWCTL_API int32_t user_ulf_flood_ports_set(uint32_t lead, uint32_t unit, user_pbmp_t ports);

/**
 * @brief The ports that receive frames to unknown unicast addresses.
 *
 * Calls rtk_l2_lookupMissFloodPortMaskIdx_get(unit, 2, ...), then
 * rtk_l2_mcastFwdPortmask_get(unit, index, ...).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param ports  receives a bitmap of chip ports, words 1 to 7 being 0;
 *               untouched on failure
 * @return the result of the last SDK call, the first negative one included
 */
SWCTL_API int32_t user_ulf_flood_ports_get(uint32_t lead, uint32_t unit, user_pbmp_t *ports);

/**
 * @brief Adds one port to those of user_ulf_flood_ports_get(), or removes it.
 *
 * Makes the two calls of user_ulf_flood_ports_get(), then
 * rtk_l2_lookupMissFloodPortMask_set_with_idx(unit, 2, index, ...) with the
 * changed mask, even if nothing changed.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param add    non-zero adds the port, 0 removes it
 * @return the result of the last SDK call, the first negative one included.
 *         A port that is not 0 to 31 is not checked for; the mask is written
 *         back as it was read.
 */
SWCTL_API int32_t user_ulf_flood_port_add_remove(uint32_t lead, uint32_t unit, int32_t port,
                                                 uint32_t add);

/**
 * @brief Switches a port's VLAN ingress filter (IEEE 802.1Q).
 *
 * Calls rtk_vlan_portIgrFilter_set(unit, port, enable), enable being 1 for any
 * non-zero value.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable non-zero: frames of VLANs that the port is no member of are
 *               refused
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_ifilter_set(uint32_t lead, uint32_t unit, int32_t port,
                                        uint32_t enable);

SWCTL_END_DECLS

#endif
