/* SPDX-License-Identifier: MIT */
/**
 * @file l2_learn.h
 * @brief The layer-2 address table: learning limits, aging, violations.
 *
 * Part of l2.h, whose rules apply.
 */
#ifndef SWCTL_L2_LEARN_H
#define SWCTL_L2_LEARN_H

#include <swctl/l2.h>

SWCTL_BEGIN_DECLS

/** The chip port that has no learning limit. */
#define USER_LEARN_UNLIMITED_PORT 28
/** The limit that is reported for that port. */
#define USER_LEARN_LIMIT_MAX 8191

/** The dump file that the violation functions write and read back. */
#define USER_MACTABLE_PATH "/var/mactable"

/**
 * @brief A port's learning limit.
 */
struct user_l2_learn_limit_t {
  uint32_t reserved1[2]; /**< not read */
  int32_t port;          /**< chip port */
  uint32_t reserved2[2]; /**< not read */
  int32_t limit;         /**< number of addresses */
};
typedef struct user_l2_learn_limit_t user_l2_learn_limit_t;

/**
 * @brief Sets the aging time of learned addresses.
 *
 * Passes through to rtk_l2_aging_set(0, time).
 *
 * @param lead ignored
 * @param time in the SDK's unit, not converted
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_age_time_set(uint32_t lead, uint32_t time);

/**
 * @brief Reads the aging time of learned addresses.
 *
 * Passes through to rtk_l2_aging_get(0, time).
 *
 * @param lead ignored
 * @param time passed to the SDK; receives the time in the SDK's unit
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_age_time_get(uint32_t lead, uint32_t *time);

/**
 * @brief Sets how many addresses a port may learn.
 *
 * Calls rtk_l2_portLimitLearningCntEnable_set(0, port, 1), ignoring its
 * result, and rtk_l2_portLimitLearningCnt_set(0, port, limit).
 *
 * @param lead  ignored
 * @param limit port and number of addresses, by value
 * @return the result of the second call; 0 without any call for a negative
 *         port and for ::USER_LEARN_UNLIMITED_PORT
 */
SWCTL_API int32_t user_mac_learn_limit_set(uint32_t lead, user_l2_learn_limit_t limit);

/**
 * @brief Reads how many addresses a port may learn.
 *
 * Calls rtk_l2_portLimitLearningCnt_get(0, port, ...).
 *
 * @param lead  ignored
 * @param limit names the port; its member `limit` is written whatever the
 *              SDK's result is, and is 0 if the SDK wrote nothing. For
 *              ::USER_LEARN_UNLIMITED_PORT it becomes ::USER_LEARN_LIMIT_MAX
 *              without a call. For a negative port, nothing is written.
 * @return the SDK's result; 0 for ::USER_LEARN_UNLIMITED_PORT; -1 for a
 *         negative port, where the setter returns 0
 */
SWCTL_API int32_t user_mac_learn_limit_get(uint32_t lead, user_l2_learn_limit_t *limit);

/**
 * @brief Reads how many addresses a port has learned.
 *
 * Passes through to rtk_l2_portLearningCnt_get(0, port, count).
 *
 * @param port  chip port; no leading argument
 * @param count passed to the SDK; receives the number
 * @return the SDK's result
 */
SWCTL_API int32_t user_mac_learn_count_get_by_port(int32_t port, uint32_t *count);

/**
 * @brief Counts the violation entries of a port.
 *
 * Calls user_mac_table_show(0, ::USER_MACTABLE_PATH), opens that file and
 * reads it with user_l2_mactable_fread(). An entry counts if its port is the
 * given one, ::L2_FLAG_VIOLATION is set in its flags and
 * ::USER_L2_FLAG_VIOLATION_IGNORED is not. The file stays on disk.
 *
 * This is no mere query. user_mac_table_show() walks the table, and the walk
 * removes every stale entry from the chip (l2_walk.h), of whatever port, and
 * logs the static ones among them. If the file cannot be made, it prints
 * "create mactable Error!!!!!!!!!!!!1".
 *
 * Two callers at the same time write and read the same file; what they read
 * may be truncated or mixed.
 *
 * @param port  chip port; no leading argument
 * @param count receives the number; 0 if the file cannot be made or opened
 * @return 0, always
 */
SWCTL_API int32_t user_mac_violate_count_get_by_port(int32_t port, uint32_t *count);

/**
 * @brief Asks the chip to delete a port's violation entries, under wrong
 *        addresses.
 *
 * Finds the entries as user_mac_violate_count_get_by_port() does, and with the
 * same effects: stale entries are removed and logged, and the same line may be
 * printed. For each violation entry it writes the address as text,
 * "02:00:5e:00:00:01", and passes the text in place of the address,
 * user_mac_addr_delete(0, text, vid), ignoring its result. So the chip is
 * asked to delete the address made of the first six characters, and in
 * practice the violation entries stay. Programs rely on this.
 *
 * @param port chip port; no leading argument
 * @return 0, always
 */
SWCTL_API int32_t user_mac_violate_del_by_port(int32_t port);

SWCTL_END_DECLS

#endif
