/* SPDX-License-Identifier: MIT */
/**
 * @file l2_delete.h
 * @brief The layer-2 address table: deleting many entries at once.
 *
 * Part of l2.h, whose rules apply.
 *
 * An entry is *static* if STATIC_ENTRY_TEST() holds for its flags and
 * *dynamic* if ::USER_L2_FLAG_STATIC is not set. Some entries are neither.
 */
#ifndef SWCTL_L2_DELETE_H
#define SWCTL_L2_DELETE_H

#include <swctl/l2.h>

SWCTL_BEGIN_DECLS

/**
 * @name Learn types
 * Which entries user_l2_addr_del_all_addr_by_lrntype() removes.
 * @{
 */
#define USER_LEARN_TYPE_DYNAMIC 0u
#define USER_LEARN_TYPE_STATIC 1u
/** Any other value means the same. */
#define USER_LEARN_TYPE_ALL 2u
/** @} */

/**
 * @name Flush deletes
 * Each is one request to the chip, rtk_l2_ucastAddr_flush(0, &request); the
 * chip finds the entries. Words of the request that a function does not name
 * are 0. includeStatic is 1 if the last argument is not 0. Only the low 16
 * bits of a VLAN ID go into the request. Nothing is logged. All return the
 * SDK's result.
 * @{
 */
/**
 * @brief Flushes the entries of a chip port, whatever their MAC address.
 *
 * Request: byInterface 1, interfaceIsPort 1, portOrTrunk = port.
 *
 * @param lead  ignored
 * @param unit  ignored; the SDK gets unit 0
 * @param mac   ignored
 * @param value ignored
 * @param port  chip port
 * @param flags non-zero: static entries too
 * @return the SDK's result
 */
SWCTL_API int32_t user_l2_addr_delete_by_mac_port(uint32_t lead, uint32_t unit, const uint8_t *mac,
                                                  uint32_t value, int32_t port, uint32_t flags);

/**
 * @brief Flushes the entries of a chip port.
 *
 * Request: byInterface 1, interfaceIsPort 1, portOrTrunk = port.
 *
 * @param lead  ignored
 * @param unit  ignored; the SDK gets unit 0
 * @param value ignored
 * @param port  chip port
 * @param flags non-zero: static entries too
 * @return the SDK's result
 */
SWCTL_API int32_t user_l2_addr_delete_by_port(uint32_t lead, uint32_t unit, uint32_t value,
                                              int32_t port, uint32_t flags);

/**
 * @brief Flushes with a trunk group in the request that selects nothing.
 *
 * Request: byInterface 0, interfaceIsPort 1, portOrTrunk = trunk.
 *
 * @param lead  ignored
 * @param unit  ignored; the SDK gets unit 0
 * @param trunk trunk group ID
 * @param flags non-zero: static entries too
 * @return the SDK's result
 */
SWCTL_API int32_t user_l2_addr_delete_by_trunk(uint32_t lead, uint32_t unit, int32_t trunk,
                                               uint32_t flags);

/**
 * @brief Flushes the entries of a VLAN.
 *
 * Request: byVlan 1, vid = VLAN.
 *
 * @param lead  ignored
 * @param unit  ignored; the SDK gets unit 0
 * @param vid   VLAN ID; the low 16 bits count
 * @param flags non-zero: static entries too
 * @return the SDK's result
 */
SWCTL_API int32_t user_l2_addr_delete_by_vlan(uint32_t lead, uint32_t unit, uint32_t vid,
                                              uint32_t flags);

/**
 * @brief Flushes the entries of a VLAN on a chip port.
 *
 * Request: byVlan 1, vid = VLAN, byInterface 1, interfaceIsPort 1, portOrTrunk
 * = port.
 *
 * @param lead  ignored
 * @param unit  ignored; the SDK gets unit 0
 * @param vid   VLAN ID; the low 16 bits count
 * @param value ignored
 * @param port  chip port
 * @param flags non-zero: static entries too
 * @return the SDK's result
 */
SWCTL_API int32_t user_l2_addr_delete_by_vlan_port(uint32_t lead, uint32_t unit, uint32_t vid,
                                                   uint32_t value, int32_t port, uint32_t flags);

/**
 * @brief Flushes the entries of a VLAN on a trunk group.
 *
 * Request: byVlan 1, vid = VLAN, byInterface 1, interfaceIsPort 0, portOrTrunk
 * = trunk.
 *
 * @param lead  ignored
 * @param unit  ignored; the SDK gets unit 0
 * @param vid   VLAN ID; the low 16 bits count
 * @param trunk trunk group ID
 * @param flags non-zero: static entries too
 * @return the SDK's result
 */
SWCTL_API int32_t user_l2_addr_delete_by_vlan_trunk(uint32_t lead, uint32_t unit, uint32_t vid,
                                                    int32_t trunk, uint32_t flags);

/**
 * @brief Flushes without a selection, whatever the MAC address is.
 *
 * Request: 0 but for includeStatic.
 *
 * @param lead  ignored
 * @param unit  ignored; the SDK gets unit 0
 * @param mac   ignored
 * @param flags non-zero: static entries too
 * @return the SDK's result
 */
SWCTL_API int32_t user_l2_addr_delete_by_mac(uint32_t lead, uint32_t unit, const uint8_t *mac,
                                             uint32_t flags);

/** @} */

/**
 * @name Walk deletes
 * The library walks the table with rtk_l2_traverse(unit, callback, match). The
 * callback deletes the entries that match with rtk_l2_addr_del(0, vid, mac),
 * ignoring its result. Stale entries are removed as in every walk. The
 * location in the trace is the callback's name.
 *
 * "On a logical interface" means that the callback calls
 * adp_phy_2_intf_id(entry.port) last, just before the delete, and keeps the
 * entry if the answer is 0 or 28.
 *
 * **VLAN IDs.** All 32 bits of a VLAN ID are compared with those of the entry,
 * so an ID above 65535 matches no entry of the chip. Only
 * user_l2_addr_delete_static_by_vlan() and its callback compare 16 bits.
 *
 * **Callbacks.** The callbacks are exported for the caller's own walks. They
 * are walk callbacks as in l2_walk.h: they ignore the unit, do not change the
 * entry or the data, and always return 0, so that the walk goes on. A callback
 * whose data is a ::chip_l2_ucast_entry copies all 52 bytes of it, so they
 * must be readable; only the members that its text names are compared.
 *
 * All these functions return 0; no failure is reported.
 * @{
 */
/**
 * @brief Deletes the static entries of a MAC address on a chip port.
 *
 * Logged.
 *
 * @param lead ignored
 * @param unit passed to the callback
 * @param mac  six bytes
 * @param port chip port
 * @param vid  VLAN ID, all 32 bits; 0 means every VLAN
 * @return 0, always
 */
SWCTL_API int32_t user_l2_addr_delete_static_by_mac_port(uint32_t lead, uint32_t unit,
                                                         const uint8_t *mac, int32_t port,
                                                         uint32_t vid);

/**
 * @brief The callback of user_l2_addr_delete_static_by_mac_port().
 *
 * @param unit  ignored
 * @param entry the entry that the walk has reached
 * @param data  a ::chip_l2_ucast_entry with mac, port and vid (32 bits; 0:
 *              any)
 * @return 0, always
 */
SWCTL_API int32_t del_static_mac_by_mac_port_callback(uint32_t unit, chip_l2_ucast_entry *entry,
                                                      void *data);

/**
 * @brief Deletes the static entries of a MAC address on a chip port.
 *
 * Logged.
 *
 * @param lead ignored
 * @param unit passed to the callback
 * @param mac  six bytes
 * @param port chip port; despite the function's name, not a trunk group
 * @param vid  VLAN ID, all 32 bits; 0 means every VLAN
 * @return 0, always
 */
SWCTL_API int32_t user_l2_addr_delete_trunk_static_by_port_mac_vlan(uint32_t lead, uint32_t unit,
                                                                    const uint8_t *mac,
                                                                    int32_t port, uint32_t vid);

/**
 * @brief The callback of user_l2_addr_delete_trunk_static_by_port_mac_vlan().
 *
 * @param unit  ignored
 * @param entry the entry that the walk has reached
 * @param data  a ::chip_l2_ucast_entry with mac, port and vid (32 bits; 0:
 *              any)
 * @return 0, always
 */
SWCTL_API int32_t del_static_trunk_mac_by_mac_port_vid_callback(uint32_t unit,
                                                                chip_l2_ucast_entry *entry,
                                                                void *data);

/**
 * @brief Deletes the dynamic entries of a MAC address on a chip port.
 *
 * Not logged.
 *
 * @param lead ignored
 * @param unit passed to the callback
 * @param mac  six bytes
 * @param port chip port; despite the function's name, not a trunk group
 * @param vid  VLAN ID, all 32 bits; 0 means every VLAN
 * @return 0, always
 */
SWCTL_API int32_t user_l2_addr_delete_trunk_dynamic_by_port_mac_vlan(uint32_t lead, uint32_t unit,
                                                                     const uint8_t *mac,
                                                                     int32_t port, uint32_t vid);

/**
 * @brief The callback of user_l2_addr_delete_trunk_dynamic_by_port_mac_vlan().
 *
 * @param unit  ignored
 * @param entry the entry that the walk has reached
 * @param data  a ::chip_l2_ucast_entry with mac, port and vid (32 bits; 0:
 *              any)
 * @return 0, always
 */
SWCTL_API int32_t del_dynamic_trunk_mac_by_mac_port_vid_callback(uint32_t unit,
                                                                 chip_l2_ucast_entry *entry,
                                                                 void *data);

/**
 * @brief Deletes the entries of a MAC address on a chip port: despite the
 *        name, static ones too.
 *
 * Logged if the entry is static.
 *
 * @param lead ignored
 * @param unit passed to the callback
 * @param mac  six bytes
 * @param port chip port
 * @param vid  VLAN ID, all 32 bits; 0 means every VLAN
 * @return 0, always
 */
SWCTL_API int32_t user_l2_addr_delete_all_dynamic_by_port_mac_vlan(uint32_t lead, uint32_t unit,
                                                                   const uint8_t *mac, int32_t port,
                                                                   uint32_t vid);

/**
 * @brief The callback of user_l2_addr_delete_all_dynamic_by_port_mac_vlan().
 *
 * @param unit  ignored
 * @param entry the entry that the walk has reached
 * @param data  a ::chip_l2_ucast_entry with mac, port and vid (32 bits; 0:
 *              any)
 * @return 0, always
 */
SWCTL_API int32_t del_all_trunk_mac_by_mac_port_vid_callback(uint32_t unit,
                                                             chip_l2_ucast_entry *entry,
                                                             void *data);

/**
 * @brief Deletes the dynamic entries of a MAC address on a chip port.
 *
 * Not logged.
 *
 * @param lead ignored
 * @param unit passed to the callback
 * @param mac  six bytes
 * @param port chip port
 * @param vid  VLAN ID, all 32 bits; 0 means every VLAN
 * @return 0, always
 */
SWCTL_API int32_t user_l2_addr_delete_dynaic_by_mac_port(uint32_t lead, uint32_t unit,
                                                         const uint8_t *mac, int32_t port,
                                                         uint32_t vid);

/**
 * @brief The callback of user_l2_addr_delete_dynaic_by_mac_port().
 *
 * @param unit  ignored
 * @param entry the entry that the walk has reached
 * @param data  a ::chip_l2_ucast_entry with mac, port and vid (32 bits; 0:
 *              any)
 * @return 0, always
 */
SWCTL_API int32_t del_dynaic_mac_by_mac_port_callback(uint32_t unit, chip_l2_ucast_entry *entry,
                                                      void *data);

/**
 * @brief Deletes the entries of a MAC address on a chip port, static or not,
 *        in every VLAN.
 *
 * Logged if the entry is static.
 *
 * @param lead ignored
 * @param unit passed to the callback
 * @param mac  six bytes
 * @param port chip port
 * @return 0, always
 */
SWCTL_API int32_t user_l2_addr_delete_all_by_mac_port(uint32_t lead, uint32_t unit,
                                                      const uint8_t *mac, int32_t port);

/**
 * @brief The callback of user_l2_addr_delete_all_by_mac_port().
 *
 * @param unit  ignored
 * @param entry the entry that the walk has reached
 * @param data  a ::chip_l2_ucast_entry with mac and port
 * @return 0, always
 */
SWCTL_API int32_t del_all_mac_by_mac_port_callback(uint32_t unit, chip_l2_ucast_entry *entry,
                                                   void *data);

/**
 * @brief Deletes the static entries of a chip port.
 *
 * Logged.
 *
 * @param lead  ignored
 * @param unit  passed to the callback
 * @param value ignored
 * @param port  chip port
 * @return 0, always
 */
SWCTL_API int32_t user_l2_addr_delete_static_by_port(uint32_t lead, uint32_t unit, uint32_t value,
                                                     int32_t port);

/**
 * @brief The callback of user_l2_addr_delete_static_by_port().
 *
 * @param unit  ignored
 * @param entry the entry that the walk has reached
 * @param data  the chip port, an int32_t
 * @return 0, always
 */
SWCTL_API int32_t del_static_mac_by_port_callback(uint32_t unit, chip_l2_ucast_entry *entry,
                                                  void *data);

/**
 * @brief Deletes the static entries of a trunk group that are on a logical
 *        interface.
 *
 * Logged.
 *
 * @param lead  ignored
 * @param unit  passed to the callback
 * @param trunk trunk group ID; 0 also matches entries that are on no trunk
 * @return 0, always
 */
SWCTL_API int32_t user_l2_addr_delete_static_by_trunk(uint32_t lead, uint32_t unit, int32_t trunk);

/**
 * @brief The callback of user_l2_addr_delete_static_by_trunk().
 *
 * @param unit  ignored
 * @param entry the entry that the walk has reached
 * @param data  the trunk group ID, an int32_t
 * @return 0, always
 */
SWCTL_API int32_t del_static_mac_by_trunk_callback(uint32_t unit, chip_l2_ucast_entry *entry,
                                                   void *data);

/**
 * @brief Deletes the static entries of a VLAN that are on a logical interface.
 *
 * Logged.
 *
 * @param lead ignored
 * @param unit passed to the callback
 * @param vid  VLAN ID; the low 16 bits count
 * @return 0, always
 */
SWCTL_API int32_t user_l2_addr_delete_static_by_vlan(uint32_t lead, uint32_t unit, uint32_t vid);

/**
 * @brief The callback of user_l2_addr_delete_static_by_vlan().
 *
 * @param unit  ignored
 * @param entry the entry that the walk has reached
 * @param data  the VLAN ID, a uint16_t; compared with the low 16 bits of the
 *              entry's
 * @return 0, always
 */
SWCTL_API int32_t del_static_mac_by_vlan_callback(uint32_t unit, chip_l2_ucast_entry *entry,
                                                  void *data);

/**
 * @brief Deletes the static entries of a VLAN on a chip port.
 *
 * Logged.
 *
 * @param lead ignored
 * @param unit passed to the callback
 * @param vid  VLAN ID, all 32 bits; 0 means VLAN 0, not every VLAN
 * @param port chip port
 * @return 0, always
 */
SWCTL_API int32_t user_l2_addr_delete_static_by_vlan_port(uint32_t lead, uint32_t unit,
                                                          uint32_t vid, int32_t port);

/**
 * @brief The callback of user_l2_addr_delete_static_by_vlan_port().
 *
 * @param unit  ignored
 * @param entry the entry that the walk has reached
 * @param data  a ::chip_l2_ucast_entry with vid (32 bits) and port
 * @return 0, always
 */
SWCTL_API int32_t del_static_mac_by_vlan_port_callback(uint32_t unit, chip_l2_ucast_entry *entry,
                                                       void *data);

/**
 * @brief Deletes the static entries of a VLAN on a trunk group.
 *
 * Logged.
 *
 * @param lead  ignored
 * @param unit  passed to the callback
 * @param vid   VLAN ID, all 32 bits; 0 means VLAN 0, not every VLAN
 * @param trunk trunk group ID; 0 also matches entries that are on no trunk
 * @return 0, always
 */
SWCTL_API int32_t user_l2_addr_delete_static_by_vlan_trunk(uint32_t lead, uint32_t unit,
                                                           uint32_t vid, int32_t trunk);

/**
 * @brief The callback of user_l2_addr_delete_static_by_vlan_trunk().
 *
 * @param unit  ignored
 * @param entry the entry that the walk has reached
 * @param data  a ::chip_l2_ucast_entry with vid (32 bits) and trunk
 * @return 0, always
 */
SWCTL_API int32_t del_static_mac_by_vlan_trunk_callback(uint32_t unit, chip_l2_ucast_entry *entry,
                                                        void *data);

/**
 * @brief Deletes the static entries of a MAC address, on any port and in every
 *        VLAN.
 *
 * Logged.
 *
 * @param lead ignored
 * @param unit passed to the callback
 * @param mac  six bytes
 * @return 0, always
 */
SWCTL_API int32_t user_l2_addr_delete_static_by_mac(uint32_t lead, uint32_t unit,
                                                    const uint8_t *mac);

/**
 * @brief The callback of user_l2_addr_delete_static_by_mac().
 *
 * @param unit  ignored
 * @param entry the entry that the walk has reached
 * @param data  a ::chip_l2_ucast_entry with mac
 * @return 0, always
 */
SWCTL_API int32_t del_static_mac_by_mac_callback(uint32_t unit, chip_l2_ucast_entry *entry,
                                                 void *data);

/**
 * @brief Deletes all entries of a type.
 *
 * - ::USER_LEARN_TYPE_DYNAMIC: the dynamic entries. Nothing is logged, and the
 *   adapter is not called.
 * - ::USER_LEARN_TYPE_STATIC: the static entries on a logical interface. Each
 *   is logged.
 * - Any other type: every entry on a logical interface. Nothing is logged, not
 *   even for a static entry.
 *
 * @param lead ignored
 * @param unit passed to the callback
 * @param type ::USER_LEARN_TYPE_DYNAMIC, ::USER_LEARN_TYPE_STATIC, or anything
 *             else for every entry
 * @return 0, always
 */
SWCTL_API int32_t user_l2_addr_del_all_addr_by_lrntype(uint32_t lead, uint32_t unit, uint32_t type);

/**
 * @brief The callback of user_l2_addr_del_all_addr_by_lrntype().
 *
 * @param unit  ignored
 * @param entry the entry that the walk has reached
 * @param data  the learn type, a uint32_t
 * @return 0, always
 */
SWCTL_API int32_t del_all__mac_bytype_callback(uint32_t unit, chip_l2_ucast_entry *entry,
                                               void *data);

/** @} */

SWCTL_END_DECLS

#endif
