/* SPDX-License-Identifier: MIT */
/**
 * @file field.h
 * @brief The field processor: access-control rules, meters and counters.
 *
 * The laws in frame.h hold throughout.
 */
#ifndef SWCTL_FIELD_H
#define SWCTL_FIELD_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0.
 * The sentence says what the call is for on a device that offers it.
 * @{
 */
/** Changes what a group of rules can match. */
SWCTL_API int32_t user_field_group_set(uint32_t lead, ...);
/** What a group of rules can match. */
SWCTL_API int32_t user_field_group_get(uint32_t lead, ...);
/** Makes a group of rules with a certain number. */
SWCTL_API int32_t user_field_group_create_id(uint32_t lead, ...);
/** Makes a rule with a certain number. */
SWCTL_API int32_t user_field_entry_create_id(uint32_t lead, ...);
/** Sets a rule's place among the rules that match. */
SWCTL_API int32_t user_field_entry_prio_set(uint32_t lead, ...);
/** Lets a rule match frames that other stages drop. */
SWCTL_API int32_t user_field_qualify_Drop(uint32_t lead, ...);
/** Takes a meter for a rule. */
SWCTL_API int32_t user_field_meter_create(uint32_t lead, ...);
/** Frees a rule's meter. */
SWCTL_API int32_t user_field_meter_destroy(uint32_t lead, ...);
/** Sets the rate of a rule's meter. */
SWCTL_API int32_t user_field_meter_set(uint32_t lead, ...);
/** Adds an action on a set of ports to a rule. */
SWCTL_API int32_t user_field_action_ports_add(uint32_t lead, ...);
/** Adds an action that writes a MAC address to a rule. */
SWCTL_API int32_t user_field_action_mac_add(uint32_t lead, ...);
/** Removes every action of a rule. */
SWCTL_API int32_t user_field_action_remove_all(uint32_t lead, ...);
/** Removes every qualifier of a rule. */
SWCTL_API int32_t user_field_qualify_clear(uint32_t lead, ...);
/** Destroys a group of rules. */
SWCTL_API int32_t user_field_group_destroy(uint32_t lead, ...);
/** Makes a counter with a certain number. */
SWCTL_API int32_t user_field_stat_create_id(uint32_t lead, ...);
/** Frees a counter. */
SWCTL_API int32_t user_field_stat_destroy(uint32_t lead, ...);
/** Lets a counter count what a rule matches. */
SWCTL_API int32_t user_field_entry_stat_attach(uint32_t lead, ...);
/** Lets a counter no longer count what a rule matches. */
SWCTL_API int32_t user_field_entry_stat_detach(uint32_t lead, ...);
/** @} */

/**
 * @brief Makes meters leave out the gap between frames.
 *
 * Calls rtk_acl_meterIncludeIfg_set(0, 0) on unit 0, whatever the argument.
 *
 * @param unit ignored
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_meter_ifg_exclude_init(uint32_t unit, ...);

SWCTL_END_DECLS

#endif
