/* SPDX-License-Identifier: MIT */
/**
 * @file mcast_l2.h
 * @brief Multicast: layer-2 groups.
 *
 * Part of mcast.h. A group is an address in a VLAN with a set of chip ports.
 * The rules in frame.h apply; the unit is passed to the SDK. Only bits 0 to 31
 * (word 0) of a port bitmap reach the chip. Addresses, VLANs and ports are not
 * checked.
 */
#ifndef SWCTL_MCAST_L2_H
#define SWCTL_MCAST_L2_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @brief The caller's multicast group record. 88 bytes.
 */
struct User_mcast_addr_t {
  uint8_t mac[SWCTL_MAC_BYTES]; /**< group address, first byte first */
  uint16_t vid;                 /**< VLAN ID */
  uint32_t reserved1;           /**< not used */
  user_pbmp_t pbmp;             /**< member ports: bit i is chip port i */
  uint32_t reserved2[11];       /**< not used */
};
typedef struct User_mcast_addr_t User_mcast_addr_t;

/**
 * @brief Clears a record and fills in its MAC address and VLAN.
 *
 * Makes no SDK call.
 *
 * @param lead   ignored
 * @param record written whole; it is the second argument, there is no unit
 * @param mac    six bytes
 * @param vid    VLAN ID; the low 16 bits count
 * @return 0
 */
SWCTL_API int32_t User_mcast_addr_t_init(uint32_t lead, User_mcast_addr_t *record,
                                         const uint8_t *mac, uint32_t vid);

/**
 * @brief Adds a group.
 *
 * Calls rtk_l2_mcastAddr_add(unit, &entry) with the record's vid, mac and
 * ports. The SDK decides what happens to a group that exists.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param record the group; read, not kept
 * @return the SDK's result
 */
SWCTL_API int32_t User_mcast_addr_add(uint32_t lead, uint32_t unit,
                                      const User_mcast_addr_t *record);

/**
 * @brief Removes a group.
 *
 * Calls rtk_l2_mcastAddr_del(unit, vid, mac).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param mac  six bytes
 * @param vid  VLAN ID, passed to the SDK as it is: all 32 bits count
 * @return the SDK's result
 */
SWCTL_API int32_t User_mcast_addr_remove(uint32_t lead, uint32_t unit, const uint8_t *mac,
                                         uint32_t vid);

/**
 * @brief Replaces the ports of a group with those of the record.
 *
 * Calls rtk_l2_mcastAddr_del(unit, vid, mac), ignoring its result, and
 * rtk_l2_mcastAddr_add(unit, &entry). The ports in the chip are neither read
 * nor merged: the caller passes the complete new set of ports. A group that
 * does not exist is made. The two steps are not atomic; between them the group
 * is not in the chip.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param record the group with its complete new ports; read, not kept
 * @return the result of rtk_l2_mcastAddr_add()
 */
SWCTL_API int32_t User_mcast_port_add(uint32_t lead, uint32_t unit,
                                      const User_mcast_addr_t *record);

/**
 * @brief The same as User_mcast_port_add(), under another name.
 *
 * It does not remove the ports of the record: they are the ones that remain.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param record the group with its complete new ports; read, not kept
 * @return the result of rtk_l2_mcastAddr_add()
 */
SWCTL_API int32_t User_mcast_port_remove(uint32_t lead, uint32_t unit,
                                         const User_mcast_addr_t *record);

/**
 * @brief Reads a group.
 *
 * Calls rtk_l2_mcastAddr_get(unit, &entry).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param mac    six bytes
 * @param vid    VLAN ID; the low 16 bits count
 * @param record receives mac, vid and pbmp unless the result is negative; its
 *               other members are unchanged
 * @return the SDK's result
 */
SWCTL_API int32_t User_mcast_port_get(uint32_t lead, uint32_t unit, const uint8_t *mac,
                                      uint32_t vid, User_mcast_addr_t *record);

SWCTL_END_DECLS

#endif
