/* SPDX-License-Identifier: MIT */
/**
 * @file mcast_l2.h
 * @brief Multicast: layer-2 groups.
 *
 * Part of mcast.h. A group is an address in a VLAN with a set of chip ports.
 * The laws in frame.h hold throughout; the unit is handed to the SDK. Of a
 * port bitmap only bits 0 to 31 (word 0) reach the chip. Addresses, VLANs and
 * ports are not checked.
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
  uint16_t vid;                 /**< VLAN id */
  uint32_t reserved1;           /**< not used */
  user_pbmp_t pbmp;             /**< member ports: bit i is chip port i */
  uint32_t reserved2[11];       /**< not used */
};
typedef struct User_mcast_addr_t User_mcast_addr_t;

/**
 * @brief Prepares a record: all of it 0 but address and VLAN.
 *
 * Makes no SDK call.
 *
 * @param lead   ignored
 * @param record receives the whole record; it comes second, there is no unit
 * @param mac    six bytes
 * @param vid    VLAN id; the low 16 bits count
 * @return 0
 */
SWCTL_API int32_t User_mcast_addr_t_init(uint32_t lead, User_mcast_addr_t *record,
                                         const uint8_t *mac, uint32_t vid);

/**
 * @brief Adds a group.
 *
 * Calls rtk_l2_mcastAddr_add(unit, &entry) with the record's vid, mac and
 * ports; what becomes of a group that exists is the SDK's decision.
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
 * @brief Gives a group exactly the ports of the record.
 *
 * Calls rtk_l2_mcastAddr_del(unit, vid, mac), result ignored, and
 * rtk_l2_mcastAddr_add(unit, &entry). The ports in the chip are neither read
 * nor merged: the caller adds a port to its own complete set and passes that.
 * A group that does not exist is made. The two steps are not atomic; the group
 * is absent from the chip between them.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param record the group with its complete new ports; read, not kept
 * @return the result of rtk_l2_mcastAddr_add()
 */
SWCTL_API int32_t User_mcast_port_add(uint32_t lead, uint32_t unit,
                                      const User_mcast_addr_t *record);

/**
 * @brief The same as User_mcast_port_add() under its second name.
 *
 * It takes no port away by itself: the record holds the ports that remain.
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
 * @param vid    VLAN id; the low 16 bits count
 * @param record receives mac, vid and pbmp unless the result is negative; the
 *               rest of it is left alone
 * @return the SDK's result
 */
SWCTL_API int32_t User_mcast_port_get(uint32_t lead, uint32_t unit, const uint8_t *mac,
                                      uint32_t vid, User_mcast_addr_t *record);

SWCTL_END_DECLS

#endif
