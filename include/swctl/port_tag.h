/* SPDX-License-Identifier: MIT */
/**
 * @file port_tag.h
 * @brief Ports: double-tag mode and TPIDs.
 *
 * Part of port.h. Its rules apply: the leading argument is ignored; the unit
 * and the chip's physical port go to the SDK unchanged.
 */
#ifndef SWCTL_PORT_TAG_H
#define SWCTL_PORT_TAG_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** Port mode: double tag, with an outer VLAN tag (IEEE 802.1ad). */
#define USER_DTAG_ON 1u
/** Port mode: ordinary. */
#define USER_DTAG_OFF 0u

/**
 * @brief Switches a port into double-tag mode or back.
 *
 * Calls rtk_l2_vlanMode_get(unit, port, ...), ignoring its result; the mode
 * counts as 0 if that call wrote nothing. If the port already is in the mode
 * that is asked for (1 on, 0 off), nothing else happens. Otherwise the library
 * reads its count of double-tag ports.
 *
 * On: if the count read is 0, the whole switch is changed over. Then it calls
 * rtk_l2_vlanMode_set(unit, port, 1) and
 * rtk_vlan_portIgrTagKeepEnable_set(unit, port, 0, 1), and adds 1 to the
 * count.
 *
 * Off: calls rtk_l2_vlanMode_set(unit, port, 0) and
 * rtk_vlan_portIgrTagKeepEnable_set(unit, port, 1, 0). If the count read is 1,
 * the whole switch is then changed back. Subtracts 1 from the count.
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
 * The first negative result of any of these calls ends the function and leaves
 * the count as it is. There is one count for the whole library, 0 at load. It
 * counts the changes that this process made: a port that another process
 * switched on is not counted, so the count may fall below 0. It has no lock;
 * threads that change modes at the same time each go by the count that they
 * read.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param mode 0 off, anything else on
 * @return 0 if there was nothing to do, else the result of the last SDK call,
 *         the first negative one included
 */
SWCTL_API int32_t user_port_dtag_mode_set(uint32_t lead, uint32_t unit, int32_t port,
                                          uint32_t mode);

/**
 * @brief Reads whether a port is in double-tag mode.
 *
 * Calls rtk_l2_vlanMode_get(unit, port, ...).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param mode receives 1 if the SDK's mode is 1, else 0; 0 on failure
 * @return the SDK's result
 */
SWCTL_API int32_t user_port_dtag_mode_get(uint32_t lead, uint32_t unit, int32_t port,
                                          uint32_t *mode);

/**
 * @brief Sets a TPID and makes a port use it.
 *
 * Calls rtk_vlan_innerTpidEntry_set(unit, index, tpid),
 * rtk_vlan_portIgrInnerTpid_set(unit, port, 1 << (index mod 32)),
 * rtk_vlan_portEgrInnerTpid_set(unit, port, index),
 * rtk_vlan_outerTpidEntry_set(unit, index, tpid) and
 * rtk_vlan_portEgrOuterTpid_set(unit, port, index), and stops at the first
 * negative result.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param port  chip port
 * @param tpid  TPID; the low 16 bits count
 * @param index entry of the SDK's two tables
 * @return the result of the last SDK call, the first negative one included
 */
SWCTL_API int32_t user_port_tpid_set(uint32_t lead, uint32_t unit, int32_t port, uint32_t tpid,
                                     uint32_t index);

/**
 * @brief Reads the TPID of the inner tags that a port sends.
 *
 * Calls rtk_vlan_portEgrInnerTpid_get(unit, port, ...), then
 * rtk_vlan_innerTpidEntry_get(unit, index, ...).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param port chip port
 * @param tpid receives the low 16 bits; unchanged on failure
 * @return the result of the last SDK call, the first negative one included
 */
SWCTL_API int32_t user_port_tpid_get(uint32_t lead, uint32_t unit, int32_t port, uint16_t *tpid);

/**
 * @brief Sets an entry of the table of outer TPIDs.
 *
 * Calls rtk_vlan_outerTpidEntry_set(unit, index, tpid).
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param index entry
 * @param tpid  TPID; the low 16 bits count
 * @return the SDK's result
 */
SWCTL_API int32_t user_tpid_entry_set(uint32_t lead, uint32_t unit, uint32_t index, uint32_t tpid);

SWCTL_END_DECLS

#endif
