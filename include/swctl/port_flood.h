/* SPDX-License-Identifier: MIT */
/**
 * @file port_flood.h
 * @brief Ports: isolation, flooding, VLAN ingress filtering.
 *
 * Part of port.h. Its rules apply: the leading argument is ignored; the unit
 * and the chip's physical port go to the SDK unchanged.
 */
#ifndef SWCTL_PORT_FLOOD_H
#define SWCTL_PORT_FLOOD_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @brief Sets the ports to which a port may forward (port isolation).
 *
 * Calls rtk_port_isolation_set(unit, port, mask) with the first word of the
 * bitmap.
 *
 * @param lead    ignored
 * @param unit    switch unit
 * @param port    chip port
 * @param ignored not read
 * @param ports   bitmap of chip ports, by value; ports 32 to 255 are ignored
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_egress_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t ignored,
                                       user_pbmp_t ports);

/**
 * @brief Reads the ports to which a port may forward.
 *
 * Calls rtk_port_isolation_get(unit, port, ...).
 *
 * @param lead    ignored
 * @param unit    switch unit
 * @param port    chip port
 * @param ignored not read
 * @param ports   receives a bitmap of chip ports; words 1 to 7 are 0;
 *                unchanged on failure
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_egress_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t ignored,
                                       user_pbmp_t *ports);

/**
 * @brief Sets the ports to which unknown unicast frames are flooded.
 *
 * Reads the port-mask index of lookup-miss type 2 with
 * rtk_l2_lookupMissFloodPortMaskIdx_get(unit, 2, ...), then calls
 * rtk_l2_lookupMissFloodPortMask_set_with_idx(unit, 2, index, ...) with the
 * first word of the bitmap.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param ports bitmap of chip ports, by value; ports 32 to 255 are ignored
 * @return the result of the last SDK call, the first negative one included
 */
SWCTL_API int32_t user_ulf_flood_ports_set(uint32_t lead, uint32_t unit, user_pbmp_t ports);

/**
 * @brief Reads the ports to which unknown unicast frames are flooded.
 *
 * Calls rtk_l2_lookupMissFloodPortMaskIdx_get(unit, 2, ...), then
 * rtk_l2_mcastFwdPortmask_get(unit, index, ...).
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param ports receives a bitmap of chip ports; words 1 to 7 are 0; unchanged
 *              on failure
 * @return the result of the last SDK call, the first negative one included
 */
SWCTL_API int32_t user_ulf_flood_ports_get(uint32_t lead, uint32_t unit, user_pbmp_t *ports);

/**
 * @brief Adds a port to those of user_ulf_flood_ports_get(), or removes it.
 *
 * Makes the two calls of user_ulf_flood_ports_get(), then
 * rtk_l2_lookupMissFloodPortMask_set_with_idx(unit, 2, index, ...) with the
 * new mask, even if it is the old one.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port * @param add  non-zero adds the port, 0 removes it
 * @return the result of the last SDK call, the first negative one included
 */
SWCTL_API int32_t user_ulf_flood_port_add_remove(uint32_t lead, uint32_t unit, int32_t port,
                                                 uint32_t add);

/**
 * @brief Switches a port's VLAN ingress filter (IEEE 802.1Q) on or off.
 *
 * Calls rtk_vlan_portIgrFilter_set(unit, port, enable) with 1 for any non-zero
 * value.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param enable non-zero: the port drops frames of VLANs that it is not a
 *               member of
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_ifilter_set(uint32_t lead, uint32_t unit, int32_t port,
                                        uint32_t enable);

SWCTL_END_DECLS

#endif
