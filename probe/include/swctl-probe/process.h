/* SPDX-License-Identifier: MIT */
/**
 * @file process.h
 * @brief The probe for programs that are not written in C++: the calls that
 *        were made, and rules that let calls fail.
 *
 * probe.h says what a call and a rule are, and has more. All functions may be
 * called from any thread.
 */
#ifndef SWCTL_PROBE_PROCESS_H
#define SWCTL_PROBE_PROCESS_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @brief Adds one line of a fault plan, for example
 *        "rtk_vlan_create nth 2 result -5".
 *
 * @param rule the line
 * @param text if the result is negative, receives the sentence that names the
 *             wrong word; the caller releases it with swprobe_text_free()
 * @return 0; -1 for a line that is no rule
 */
SWCTL_API int32_t swprobe_rule_add(const char *rule, char **text);

/**
 * @brief Forgets every rule.
 */
SWCTL_API void swprobe_rules_clear(void);

/**
 * @brief How often rules have answered for the platform since
 *        swprobe_rules_clear().
 * @return the number of calls
 */
SWCTL_API uint64_t swprobe_made_up(void);

/**
 * @brief Forgets the calls so far. The first use begins to keep them.
 */
SWCTL_API void swprobe_calls_forget(void);

/**
 * @brief The calls since the last swprobe_calls_take() or
 *        swprobe_calls_forget(), oldest first.
 *
 * @return a line for each: a JSON object as in a recording, with the member
 *         "line", the call as one line of text. Null if memory runs out; the
 *         caller releases it with swprobe_text_free().
 */
SWCTL_API char *swprobe_calls_take(void);

/**
 * @brief Releases a text that a function of this header made.
 * @param text the text; null does nothing
 */
SWCTL_API void swprobe_text_free(char *text);

SWCTL_END_DECLS

#endif
