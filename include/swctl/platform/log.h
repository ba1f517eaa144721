/* SPDX-License-Identifier: MIT */
/**
 * @file log.h
 * @brief The platform's log and operation trace, as libswctl calls them.
 *
 * Declarations only; see sdk.h for who provides them.
 */
#ifndef SWCTL_PLATFORM_LOG_H
#define SWCTL_PLATFORM_LOG_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @brief Writes one log line.
 *
 * @param level  severity in syslog numbering; libswctl uses 6 (information)
 * @param option libswctl passes 0
 * @param tag    names the log's subject, for example "STATIC-MAC"
 * @param format printf format of the line, line end included
 */
SWCTL_API void Log_logging_func(int32_t level, int32_t option, const char *tag, const char *format,
                                ...) __attribute__((format(printf, 4, 5)));

/**
 * @brief Whether operation tracing is on.
 * @return not 0 while it is
 */
SWCTL_API int32_t sys_trace_get(void);

/**
 * @brief Adds one record to the operation trace.
 *
 * @param location where it happened, "function():line"
 * @param message  what happened, at most 255 characters
 */
SWCTL_API void sys_trace_add_log(const char *location, const char *message);

/**
 * @brief The platform's own sentence for one of its result codes. Optional.
 *
 * Not called by the library. Tools look the name up when they run and print
 * the bare number where the platform has no such function.
 *
 * @param result a result of an SDK or adapter call
 * @return a constant text without line end, or null for an unknown code
 */
SWCTL_API const char *swctl_platform_result_text(int32_t result);

/**
 * @brief Whether the platform can be used at all. Optional.
 *
 * Not called by the library. A tool asks before its first call and reports a
 * fault itself, in one line; the platform says nothing of it then.
 *
 * @return null, or why no call can succeed: a text without line end that stays
 *         valid as long as no call is made
 */
SWCTL_API const char *swctl_platform_open(void);

SWCTL_END_DECLS

#endif
