/* SPDX-License-Identifier: MIT */
/**
 * @file vlan_rules.h
 * @brief Rules that classify frames at the ingress, and VLAN conversion.
 *
 * Part of vlan.h. What the chip's VLAN table cannot express is done by rules
 * that the platform adapter keeps, each under its kind (entity) and index. To
 * make a rule, a function clears a record and fills in entity and index. It
 * passes the record to adp_fp_add_entity_action() for each action, then to
 * adp_fp_add_entity_qualify() for each qualifier, in the order that its text
 * gives, and last by value to adp_fp_add_entity_rule().
 *
 * - An index at or above the limit of its kind is refused with -1 before
 *   anything is done. A negative index is not refused; it is passed to the
 *   adapter.
 * - The adapter's results are ignored. So 0 means that the rule was passed to
 *   the adapter, not that it is in force.
 * - The unit is ignored: the adapter's rules belong to the board.
 * - Ports are logical interfaces, 0 to 255, passed to the adapter as they are.
 * - Only the low 16 bits of VLAN IDs and EtherTypes count. Priorities are not
 *   masked: the whole word goes to the adapter.
 * - Numbers in qualifiers have the byte order of the machine: on the device,
 *   most significant byte first.
 */
#ifndef SWCTL_VLAN_RULES_H
#define SWCTL_VLAN_RULES_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Numbers of rules
 * Indexes run from 0 to one less.
 * @{
 */
#define USER_VLAN_PROTOCOL_RULES 20
#define USER_VLAN_IP4_RULES 20
#define USER_VLAN_MAC_RULES 30
#define USER_VLAN_VOICE_RULES 15
#define USER_VLAN_DTAG_RULES 30
#define USER_VLAN_TRANSLATE_RULES 30
/** @} */

/**
 * @name Frame encapsulations
 * How a frame carries its EtherType (IEEE 802.3, IEEE 802.2). That the three
 * codes mean these encapsulations is this project's reading; the interface
 * gives them no names.
 * @{
 */
#define USER_ENCAPSULATION_ETHERNET 1u
#define USER_ENCAPSULATION_LLC 2u
#define USER_ENCAPSULATION_SNAP 4u
/** @} */

/**
 * @brief Translates the VLAN ID of tagged frames at the ingress.
 *
 * Entity 33. Actions: 123 (VLAN ID) = new_vid. Qualifiers: 13 (ingress ports),
 * 21 (tag state) = 0, 22 (received VLAN ID) = old_vid.
 *
 * @param lead    ignored
 * @param unit    ignored
 * @param index   index of the rule, below ::USER_VLAN_TRANSLATE_RULES
 * @param unused  ignored
 * @param ports   ingress interfaces
 * @param old_vid VLAN ID of the received tag
 * @param new_vid VLAN ID that is assigned
 * @return 0; -1 for an index that is too high
 */
SWCTL_API int32_t user_vlan_translate_add(uint32_t lead, uint32_t unit, int32_t index,
                                          uint32_t unused, const user_pbmp_t *ports,
                                          uint32_t old_vid, uint32_t new_vid);

/**
 * @brief Deletes a VLAN translation rule.
 *
 * Calls adp_fp_delete_entity_rule(33, index, 0) and ignores its result. The
 * index is not checked.
 *
 * @param lead  ignored
 * @param unit  ignored
 * @param index index of the rule
 * @return 0, always
 */
SWCTL_API int32_t user_vlan_translate_delete(uint32_t lead, uint32_t unit, int32_t index);

/**
 * @brief Adds an outer tag to tagged frames of a VLAN (IEEE 802.1ad).
 *
 * Entity 32. Actions: 130 (outer VLAN ID) = outer_vid, then 134 (outer
 * priority) = outer_priority unless that is 0. Qualifiers: 13 (ingress ports),
 * 21 (tag state) = 0, 22 (received VLAN ID) = inner_vid.
 *
 * @param lead           ignored
 * @param unit           ignored
 * @param index          index of the rule, below ::USER_VLAN_DTAG_RULES
 * @param unused         ignored
 * @param ports          ingress interfaces
 * @param inner_vid      VLAN ID of the received tag
 * @param outer_vid      VLAN ID of the outer tag
 * @param outer_priority priority of the outer tag, 1 to 7; 0 for none; not
 *                       masked
 * @return 0; -1 for an index that is too high
 */
SWCTL_API int32_t user_vlan_dtag_add(uint32_t lead, uint32_t unit, int32_t index, uint32_t unused,
                                     const user_pbmp_t *ports, uint32_t inner_vid,
                                     uint32_t outer_vid, uint32_t outer_priority);

/**
 * @brief Deletes a double-tagging rule.
 *
 * Calls adp_fp_delete_entity_rule(32, index, 0) and ignores its result. The
 * index is not checked.
 *
 * @param lead  ignored
 * @param unit  ignored
 * @param index index of the rule
 * @return 0, always
 */
SWCTL_API int32_t user_vlan_dtag_delete(uint32_t lead, uint32_t unit, int32_t index);

/**
 * @brief Assigns untagged frames to a VLAN by their source MAC address.
 *
 * Entity 21. Actions: 123 (VLAN ID) = vid, then 124 (priority) = priority
 * unless that is 0. Qualifiers: 13 (ingress ports), 6 (source MAC address)
 * with the mask, 21 (tag state) = 1.
 *
 * @param lead     ignored
 * @param unit     ignored
 * @param index    index of the rule, below ::USER_VLAN_MAC_RULES
 * @param mac      six bytes
 * @param mask     six bytes; a set bit must match
 * @param vid      VLAN ID that is assigned
 * @param priority priority that is assigned, 1 to 7; 0 for none; not masked
 * @param ports    ingress interfaces
 * @return 0; -1 for an index that is too high
 */
SWCTL_API int32_t user_vlan_mac_add(uint32_t lead, uint32_t unit, int32_t index, const uint8_t *mac,
                                    const uint8_t *mask, uint32_t vid, uint32_t priority,
                                    const user_pbmp_t *ports);

/**
 * @brief Deletes a MAC-based VLAN rule.
 *
 * Calls adp_fp_delete_entity_rule(21, index, 0) and ignores its result. The
 * index is not checked.
 *
 * @param lead  ignored
 * @param unit  ignored
 * @param index index of the rule
 * @return 0, always
 */
SWCTL_API int32_t user_vlan_mac_delete(uint32_t lead, uint32_t unit, int32_t index);

/**
 * @brief Assigns untagged frames to a VLAN by their source IPv4 address.
 *
 * Entity 13. Actions: 123 (VLAN ID) = vid, then 124 (priority) = priority
 * unless that is 0. Qualifiers: 13 (ingress ports), 9 (source IPv4 address)
 * with the netmask, 21 (tag state) = 1.
 *
 * @param lead     ignored
 * @param unit     ignored
 * @param index    index of the rule, below ::USER_VLAN_IP4_RULES
 * @param address  IPv4 address as a number: 192.0.2.1 is 0xC0000201
 * @param netmask  as a number, like the address
 * @param vid      VLAN ID that is assigned
 * @param priority priority that is assigned, 1 to 7; 0 for none; not masked
 * @param ports    ingress interfaces
 * @return 0; -1 for an index that is too high
 */
SWCTL_API int32_t user_vlan_ip4_add(uint32_t lead, uint32_t unit, int32_t index, uint32_t address,
                                    uint32_t netmask, uint32_t vid, uint32_t priority,
                                    const user_pbmp_t *ports);

/**
 * @brief Deletes an IPv4-subnet VLAN rule.
 *
 * Calls adp_fp_delete_entity_rule(13, index, 0) and ignores its result. The
 * index is not checked.
 *
 * @param lead  ignored
 * @param unit  ignored
 * @param index index of the rule
 * @return 0, always
 */
SWCTL_API int32_t user_vlan_ip4_delete(uint32_t lead, uint32_t unit, int32_t index);

/**
 * @brief Assigns IP phones to a VLAN by the OUI of their MAC address.
 *
 * Entity 24, where the rule has the index plus 15. Actions: 123 (VLAN ID) =
 * vid, then 124 (priority) = priority, 0 included. Qualifiers: 13 (ingress
 * ports), 6 (source MAC address) with the mask. Tagged frames match too.
 *
 * @param lead     ignored
 * @param unit     ignored
 * @param index    index of the rule, below ::USER_VLAN_VOICE_RULES
 * @param mac      six bytes
 * @param mask     six bytes; a set bit must match
 * @param vid      VLAN ID that is assigned
 * @param priority priority that is assigned, 0 to 7; not masked
 * @param ports    ingress interfaces
 * @return 0; -1 for an index that is too high
 */
SWCTL_API int32_t user_vlan_voice_oui_mac_add(uint32_t lead, uint32_t unit, int32_t index,
                                              const uint8_t *mac, const uint8_t *mask, uint32_t vid,
                                              uint32_t priority, const user_pbmp_t *ports);

/**
 * @brief Deletes a voice VLAN rule.
 *
 * Calls adp_fp_delete_entity_rule(24, index + 15, 0) and ignores its result.
 * The index is not checked.
 *
 * @param lead  ignored
 * @param unit  ignored
 * @param index index of the rule
 * @return 0, always
 */
SWCTL_API int32_t user_vlan_voice_oui_mac_delete(uint32_t lead, uint32_t unit, int32_t index);

/**
 * @brief Assigns untagged frames to a VLAN by their protocol.
 *
 * Entity 12. Actions: 123 (VLAN ID) = vid, then 124 (priority) = priority
 * unless that is 0. Qualifiers: 13 (ingress ports) unless interface 0 is among
 * them, which makes a rule for all ports; 89 (encapsulation) = 1, 2 or 3 for
 * the three encapsulations; 29 (EtherType); 21 (tag state) = 1.
 *
 * @param lead          ignored
 * @param unit          ignored
 * @param index         index of the rule, below ::USER_VLAN_PROTOCOL_RULES
 * @param unused        ignored
 * @param ports         ingress interfaces
 * @param encapsulation one of USER_ENCAPSULATION_*. Any other value is refused
 *                      after actions and ports were put into the record; no
 *                      rule is made.
 * @param ethertype     EtherType (IEEE 802)
 * @param vid           VLAN ID that is assigned
 * @param priority      priority that is assigned, 1 to 7; 0 for none; not
 *                      masked
 * @return 0; -1 for an index that is too high and for any other encapsulation
 */
SWCTL_API int32_t user_port_protocol_vlan_add(uint32_t lead, uint32_t unit, int32_t index,
                                              uint32_t unused, const user_pbmp_t *ports,
                                              uint32_t encapsulation, uint32_t ethertype,
                                              uint32_t vid, uint32_t priority);

/**
 * @brief Deletes a protocol-based VLAN rule.
 *
 * Calls adp_fp_delete_entity_rule(12, index, 0) and ignores its result. The
 * index is not checked.
 *
 * @param lead  ignored
 * @param unit  ignored
 * @param index index of the rule
 * @return 0, always
 */
SWCTL_API int32_t user_port_protocol_vlan_delete(uint32_t lead, uint32_t unit, int32_t index);

/**
 * @brief Translates the VLAN ID of frames at the egress of a port.
 *
 * Calls rtk_vlan_egrVlanCnvtEntry_set(unit, index, entry) with an entry that
 * is valid, matches the old VLAN ID and the port, ignores the second key and
 * carries the new VLAN ID; every other field is 0.
 *
 * @param lead    ignored
 * @param unit    switch unit
 * @param index   index in the chip's table
 * @param port    chip port; not converted
 * @param old_vid VLAN ID to match
 * @param new_vid VLAN ID with which the frames leave
 * @return the SDK's result
 */
SWCTL_API int32_t user_vlan_translate_egress_add(uint32_t lead, uint32_t unit, uint32_t index,
                                                 int32_t port, uint32_t old_vid, uint32_t new_vid);

/**
 * @brief Clears an entry of the egress conversion table.
 *
 * Calls rtk_vlan_egrVlanCnvtEntry_set(unit, index, entry) with an entry that
 * is not valid and ignores its three keys; every other field is 0.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param index index in the chip's table
 * @return the SDK's result
 */
SWCTL_API int32_t user_vlan_translate_egress_delete(uint32_t lead, uint32_t unit, uint32_t index);

/**
 * @brief Programs the modes of the ingress conversion blocks.
 *
 * Calls rtk_vlan_igrVlanCnvtBlkMode_set(unit, block, mode) for block 0 with
 * mode 1, block 1 with mode 2 and block 2 with mode 0. Stops at the first
 * negative result.
 *
 * @param unit switch unit; there is no leading argument
 * @return the result of the last call, a negative one included
 */
SWCTL_API int32_t user_vlan_ingress_convert_block_mode_init(uint32_t unit);

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0. The
 * sentence says what the call is for on a device that offers it.
 * @{
 */
/** Deletes every MAC-based VLAN rule. */
SWCTL_API int32_t user_vlan_mac_delete_all(uint32_t lead, ...);
/** Deletes every IPv4-subnet VLAN rule. */
SWCTL_API int32_t user_vlan_ip4_delete_all(uint32_t lead, ...);
/** Deletes every protocol-based VLAN rule. */
SWCTL_API int32_t user_port_protocol_vlan_delete_all(uint32_t lead, ...);
/** @} */

/**
 * @name Fixed result -1
 * Not supported: each ignores its arguments, calls nothing, writes nothing and
 * returns -1. The sentence says what the call is for on a device that offers
 * it.
 * @{
 */
/** Deletes every VLAN translation rule. */
SWCTL_API int32_t user_vlan_translate_delete_all(uint32_t lead, ...);
/** Reads a VLAN translation rule. */
SWCTL_API int32_t user_vlan_translate_get(uint32_t lead, ...);
/** Deletes every egress translation entry. */
SWCTL_API int32_t user_vlan_translate_egress_delete_all(uint32_t lead, ...);
/** Reads an egress translation entry. */
SWCTL_API int32_t user_vlan_translate_egress_get(uint32_t lead, ...);
/** Deletes every double-tagging rule. */
SWCTL_API int32_t user_vlan_dtag_delete_all(uint32_t lead, ...);
/** Reads a double-tagging rule. */
SWCTL_API int32_t user_vlan_dtag_get(uint32_t lead, ...);
/** @} */

SWCTL_END_DECLS

#endif
