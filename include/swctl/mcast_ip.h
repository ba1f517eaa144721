/* SPDX-License-Identifier: MIT */
/**
 * @file mcast_ip.h
 * @brief Multicast: IP entries and lookup-miss actions.
 *
 * Part of mcast.h. The rules in frame.h apply. Nothing is checked here. An
 * entry has two addresses, a and b: one is the group, the other the source.
 * The SDK defines which is which. The ports of an entry are chip ports: bits 0
 * to 31 (word 0) of the caller's bitmap are the chip's mask; the other words
 * are ignored.
 *
 * The functions for entries have no leading argument; the unit comes first.
 */
#ifndef SWCTL_MCAST_IP_H
#define SWCTL_MCAST_IP_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** Bytes of an IPv6 address. */
#define SWCTL_IP6_BYTES 16

/**
 * @brief Adds an IPv4 multicast entry.
 *
 * Calls rtk_l2_ipMcastAddr_add(unit, &entry). In the entry, address b comes
 * before address a.
 *
 * @param unit      switch unit; it is the first argument
 * @param address_a IPv4 address as a number: 192.0.2.1 is 0xC0000201
 * @param address_b the other address
 * @param vid       VLAN ID; the low 16 bits count
 * @param ports     chip ports, by value
 * @return the SDK's result
 */
SWCTL_API int32_t User_ip_mcast_add(uint32_t unit, uint32_t address_a, uint32_t address_b,
                                    uint32_t vid, user_pbmp_t ports);

/**
 * @brief Sets the ports of an IPv4 multicast entry.
 *
 * Calls rtk_l2_ipMcastAddr_set(unit, &entry) with the entry that
 * User_ip_mcast_add() would pass.
 *
 * @param unit      switch unit; it is the first argument
 * @param address_a as in User_ip_mcast_add()
 * @param address_b the other address
 * @param vid       VLAN ID; the low 16 bits count
 * @param ports     chip ports, by value
 * @return the SDK's result
 */
SWCTL_API int32_t User_ip_mcast_set(uint32_t unit, uint32_t address_a, uint32_t address_b,
                                    uint32_t vid, user_pbmp_t ports);

/**
 * @brief Deletes an IPv4 multicast entry.
 *
 * Calls rtk_l2_ipMcastAddr_del(unit, address_a, address_b, vid) with the
 * addresses in the caller's order.
 *
 * @param unit      switch unit; it is the first argument
 * @param address_a as in User_ip_mcast_add()
 * @param address_b the other address
 * @param vid       VLAN ID; the low 16 bits count
 * @return the SDK's result
 */
SWCTL_API int32_t User_ip_mcast_del(uint32_t unit, uint32_t address_a, uint32_t address_b,
                                    uint32_t vid);

/**
 * @brief Adds an IPv6 multicast entry.
 *
 * Calls rtk_l2_ip6McastAddr_add(unit, &entry). In the entry, address b comes
 * before address a.
 *
 * @param unit      switch unit; it is the first argument
 * @param address_a ::SWCTL_IP6_BYTES bytes, first byte first; need not be
 *                  aligned
 * @param address_b ::SWCTL_IP6_BYTES bytes, the other address
 * @param vid       VLAN ID; the low 16 bits count
 * @param ports     chip ports, by value
 * @return the SDK's result
 */
SWCTL_API int32_t User_ip6_mcast_add(uint32_t unit, const uint8_t *address_a,
                                     const uint8_t *address_b, uint32_t vid, user_pbmp_t ports);

/**
 * @brief Deletes an IPv6 multicast entry.
 *
 * Calls rtk_l2_ip6McastAddr_del(unit, address_a, address_b, vid) with the
 * addresses by value, in the caller's order.
 *
 * @param unit      switch unit; it is the first argument
 * @param address_a as in User_ip6_mcast_add()
 * @param address_b ::SWCTL_IP6_BYTES bytes, the other address
 * @param vid       VLAN ID; the low 16 bits count
 * @return the SDK's result
 */
SWCTL_API int32_t User_ip6_mcast_del(uint32_t unit, const uint8_t *address_a,
                                     const uint8_t *address_b, uint32_t vid);

/**
 * @brief Chooses how IPv4 multicast frames are looked up.
 *
 * Calls rtk_l2_ipmcMode_set(unit, mode) with mode 1 or 0.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param enable non-zero: mode 1
 * @return the SDK's result
 */
SWCTL_API int32_t User_switch_ipmc_set(uint32_t lead, uint32_t unit, uint32_t enable);

/**
 * @brief Chooses how IPv6 multicast frames are looked up.
 *
 * Calls rtk_l2_ip6mcMode_set(unit, mode) with mode 1 or 0.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param enable non-zero: mode 1
 * @return the SDK's result
 */
SWCTL_API int32_t User_switch_ip6mc_mode_set(uint32_t lead, uint32_t unit, uint32_t enable);

/**
 * @brief Sets what becomes of IPv4 multicast frames that match no entry.
 *
 * Calls rtk_l2_portLookupMissAction_set(unit, port, 0, action).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   ingress chip port
 * @param action the SDK's action code; not checked
 * @return the SDK's result
 */
SWCTL_API int32_t User_switch_ipmc_lookup_miss_action(uint32_t lead, uint32_t unit, int32_t port,
                                                      uint32_t action);

/**
 * @brief Sets what becomes of IPv6 multicast frames that match no entry.
 *
 * Calls rtk_l2_portLookupMissAction_set(unit, port, 1, action).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   ingress chip port
 * @param action the SDK's action code; not checked
 * @return the SDK's result
 */
SWCTL_API int32_t User_switch_ip6mc_lookup_miss_action(uint32_t lead, uint32_t unit, int32_t port,
                                                       uint32_t action);

SWCTL_END_DECLS

#endif
