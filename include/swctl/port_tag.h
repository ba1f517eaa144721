/* SPDX-License-Identifier: MIT */
/**
 * @file port_tag.h
 * @brief Ports: double-tag mode and tag protocol identifiers.
 *
 * Part of port.h, whose laws hold here: leading argument ignored, then the
 * unit, then the chip's physical port, passed to the SDK unchanged.
 */
#ifndef SWCTL_PORT_TAG_H
#define SWCTL_PORT_TAG_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** The port mode in which a second, outer VLAN tag is put on (IEEE 802.1ad). */
#define USER_DTAG_ON 1u
/** Ordinary VLAN handling. */
#define USER_DTAG_OFF 0u

/**
 * @brief Switches a port into double-tag mode or back.
 *
 * Calls rtk_l2_vlanMode_get(unit, port, ...), result ignored; a mode that it
 * did not write counts as 0. If the port is in the wanted mode already (1 to
 * switch on, 0 to switch off), nothing else happens.
 *
 * On: if no port is counted, the whole switch is changed over first, then
 * rtk_l2_vlanMode_set(unit, port, 1) and
 * rtk_vlan_portIgrTagKeepEnable_set(unit, port, 0, 1); one more port is
 * counted. Off: rtk_l2_vlanMode_set(unit, port, 0) and
 * rtk_vlan_portIgrTagKeepEnable_set(unit, port, 1, 0); if exactly one port was
 * counted, the whole switch is then changed back; one port less is counted.
 *
 * Changing over calls, for the chip port of each logical interface 1 to
 * ::USER_FRONT_INTERFACES, rtk_vlan_portIgrTagKeepEnable_set(unit, p, 1, 0),
 * rtk_vlan_portEgrTagKeepEnable_set(unit, p, 1, 1) and
 * rtk_vlan_portEgrOuterTagSts_set(unit, p, 1); then
 * rtk_vlan_portIgrTagKeepEnable_set(unit, p, 1, 0) for interface 0, and
 * rtk_vlan_outerTpidEntry_set(unit, 0, 0x8100). Changing back calls
 * rtk_vlan_portEgrOuterTagSts_set(unit, p, 0),
 * rtk_vlan_portIgrTagKeepEnable_set(unit, p, 0, 0) and
 * rtk_vlan_portEgrTagKeepEnable_set(unit, p, 0, 0) for each, then
 * rtk_vlan_portIgrTagKeepEnable_set(unit, p, 0, 0) for interface 0.
 *
 * The first negative result of any of these ends the function and leaves the
 * count as it was. The count is one for the whole library, 0 at first, of the
 * changes that this process made: ports that another one switched over are not
 * in it, and it may fall below 0.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param mode   0 off, anything else on
 * @return 0 if there was nothing to do, else the result of the last SDK call,
 *         the first negative one included
 */
SWCTL_API int32_t user_port_dtag_mode_set(uint32_t lead, uint32_t unit, int32_t port,
                                          uint32_t mode);

/**
 * @brief Whether a port is in double-tag mode.
 *
 * Calls rtk_l2_vlanMode_get(unit, port, ...).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param mode   receives 1 if the SDK's mode is 1, else 0; 0 on failure
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_dtag_mode_get(uint32_t lead, uint32_t unit, int32_t port,
                                          uint32_t *mode);

/**
 * @brief Sets a tag protocol identifier and points a port at it.
 *
 * Calls rtk_vlan_innerTpidEntry_set(unit, index, tpid),
 * rtk_vlan_portIgrInnerTpid_set(unit, port, 1 << (index mod 32)),
 * rtk_vlan_portEgrInnerTpid_set(unit, port, index),
 * rtk_vlan_outerTpidEntry_set(unit, index, tpid) and
 * rtk_vlan_portEgrOuterTpid_set(unit, port, index), up to the first negative
 * result.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param tpid   identifier; bits 16 and up are ignored
 * @param index  entry of the SDK's two tables
 * @return the result of the last SDK call, the first negative one included
 */
SWCTL_API int32_t user_port_tpid_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t tpid,
                                     uint32_t index);

/**
 * @brief The identifier of the inner tags that a port sends.
 *
 * Calls rtk_vlan_portEgrInnerTpid_get(unit, port, ...), then
 * rtk_vlan_innerTpidEntry_get(unit, index, ...).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param tpid   receives the lowest 16 bits; untouched on failure
 * @return the result of the last SDK call, the first negative one included
 */
SWCTL_API int32_t user_port_tpid_get(uint32_t lead, uint32_t unit, int32_t port, uint16_t *tpid);

/**
 * @brief Sets an entry of the table of outer tag protocol identifiers.
 *
 * Calls rtk_vlan_outerTpidEntry_set(unit, index, tpid).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param index  entry
 * @param tpid   identifier; bits 16 and up are ignored
 * @return the SDK's result
 */
SWCTL_API int32_t user_tpid_entry_set(uint32_t lead, uint32_t unit, uint32_t index, uint32_t tpid);

SWCTL_END_DECLS

#endif
