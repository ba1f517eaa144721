/* SPDX-License-Identifier: MIT */
/**
 * @file field.h
 * @brief The field processor: ACL rules, meters and counters.
 *
 * An entry of the generic interface is a rule of the chip: the entry's number
 * is the rule's index and goes to the SDK unchanged. The library keeps nothing
 * about rules. The usual order is user_field_init() once; then, for each rule,
 * its qualifiers (field_qualify.h), its actions (field_action.h) and
 * user_field_entry_install().
 *
 * The rules in frame.h apply. The leading argument is ignored; the unit goes
 * to the SDK. Units and rules are not checked; the SDK refuses what it does
 * not have. The second argument of the SDK's rule calls is always 0, the
 * chip's rule table.
 */
#ifndef SWCTL_FIELD_H
#define SWCTL_FIELD_H

#include <swctl/field_action.h>
#include <swctl/field_qualify.h>
#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** The action for which user_field_lookupMissAct_set() passes 1 to the SDK. */
#define USER_FIELD_MISS_ACTION 40u

/**
 * @brief Prepares the rule table of a unit: templates, selectors, double
 *        entries.
 *
 * Call it once before rules are written; a second call writes the same values.
 * Makes these calls in this order:
 * 1. rtk_acl_template_set(unit, 5, ...) with the field types 1, 2, 11, 14, 15,
 *    16, 23, 24, 31, 33, 34, 0, then rtk_acl_template_set(unit, 6, ...) with
 *    1, 2, 14, 5, 6, 7, 15, 16, 11, 34, 0, 0;
 * 2. rtk_acl_templateSelector_set(unit, selector, words...), ignoring the
 *    results: 10 and 11 with 0, 1, 0;
 * 3. rules 1280 to 1535 are joined in pairs;
 * 4. selectors 7 (5, 0, 0), 6 (0, 0, 0), 5 (6, 0, 0), 8 and 9 (4, 3, 0);
 * 5. rules 1024 to 1279 are joined in pairs;
 * 6. selectors 4 and 3 (5, 0, 0), 0 and 1 (4, 3, 0);
 * 7. rules 0 to 255 are joined in pairs.
 *
 * Selector 2 and rules 256 to 1023 are not touched. A pair is an even rule and
 * the next one. It is joined by rtk_acl_ruleEntryField_write(unit, 0, rule, 0,
 * ...) for each of the two, with data 0 and 1 and mask 3, ignoring the
 * results, and then rtk_acl_ruleOperation_set(unit, 0, even rule, {0, 1, 0}).
 *
 * A failed template or operation ends the function. It then prints "%s:[%05d]
 * call api failed, ret=%d \n" with "user_field_init", a fixed number and the
 * result. The number is 283 for template 5, 317 for template 6, and 368, 460
 * or 534 for an operation in the first, second or third block.
 *
 * @param lead ignored
 * @param unit switch unit
 * @return 0, or the first negative result of a template or an operation
 */
SWCTL_API int32_t user_field_init(uint32_t lead, uint32_t unit);

/**
 * @brief Puts a rule into effect.
 *
 * Passes through to rtk_acl_ruleValidate_set(unit, 0, rule, 1).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param rule rule index
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_entry_install(uint32_t lead, uint32_t unit, int32_t rule);

/**
 * @brief Deletes a rule.
 *
 * Calls rtk_acl_rule_del(unit, 0, {rule, rule}).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param rule rule index
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_entry_destroy(uint32_t lead, uint32_t unit, int32_t rule);

/**
 * @brief Chooses the template of a rule.
 *
 * Calls rtk_acl_ruleEntryField_write(unit, 0, rule, 0, ...) with one data byte
 * and the mask byte 0xFF.
 *
 * @param lead           ignored
 * @param unit           switch unit
 * @param rule           rule index
 * @param template_index template; the low 8 bits count
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_set_select_tempate_idx(uint32_t lead, uint32_t unit, int32_t rule,
                                                    uint32_t template_index);

/**
 * @brief Joins a rule with the next one into a double entry.
 *
 * Calls rtk_acl_ruleEntryField_write(unit, 0, ...) for field 0 of rule with
 * data 0 and of rule + 1 with data 1, both with mask 0xFF, ignoring the
 * results; then rtk_acl_ruleOperation_set(unit, 0, rule, {0, 1, 0}). If that
 * returns anything but 0, it prints "%s:[%05d] call api failed, ret=%d \n"
 * with "user_field_set_double_entry", 2061 and the result.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param rule first rule of the pair
 * @return the result of rtk_acl_ruleOperation_set()
 */
SWCTL_API int32_t user_field_set_double_entry(uint32_t lead, uint32_t unit, int32_t rule);

/**
 * @brief Sets what becomes of frames that match no rule.
 *
 * Calls rtk_acl_lookupMissAct_set(unit, target, ...).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param target passed on unchanged
 * @param action the SDK gets 1 for ::USER_FIELD_MISS_ACTION, 0 for any other
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_lookupMissAct_set(uint32_t lead, uint32_t unit, uint32_t target,
                                               uint32_t action);
/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0. The
 * sentence says what the call is for on a device that offers it.
 * @{
 */
/** Changes what a group of rules can match. */
SWCTL_API int32_t user_field_group_set(uint32_t lead, ...);
/** What a group of rules can match. */
SWCTL_API int32_t user_field_group_get(uint32_t lead, ...);
/** Makes a group of rules with a given number. */
SWCTL_API int32_t user_field_group_create_id(uint32_t lead, ...);
/** Makes a rule with a given number. */
SWCTL_API int32_t user_field_entry_create_id(uint32_t lead, ...);
/** Sets the priority of a rule. */
SWCTL_API int32_t user_field_entry_prio_set(uint32_t lead, ...);
/** Lets a rule match frames that would be dropped. */
SWCTL_API int32_t user_field_qualify_Drop(uint32_t lead, ...);
/** Makes a meter for a rule. */
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
/** Makes a counter with a given number. */
SWCTL_API int32_t user_field_stat_create_id(uint32_t lead, ...);
/** Frees a counter. */
SWCTL_API int32_t user_field_stat_destroy(uint32_t lead, ...);
/** Attaches a counter to a rule. */
SWCTL_API int32_t user_field_entry_stat_attach(uint32_t lead, ...);
/** Detaches a counter from a rule. */
SWCTL_API int32_t user_field_entry_stat_detach(uint32_t lead, ...);
/** @} */

/**
 * @brief Makes meters leave out the inter-frame gap.
 *
 * Calls rtk_acl_meterIncludeIfg_set(0, 0), on unit 0 whatever the argument is.
 *
 * @param unit ignored
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_meter_ifg_exclude_init(uint32_t unit, ...);

SWCTL_END_DECLS

#endif
