/* SPDX-License-Identifier: MIT */
/**
 * @file log.h
 * @brief The platform's log and operation trace, as libswctl calls them.
 *
 * Declarations only; sdk.h says who provides them.
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
 * @param tag    subject of the line, for example "STATIC-MAC"
 * @param format printf format of the line, line end included
 */
SWCTL_API void Log_logging_func(int32_t level, int32_t option, const char *tag, const char *format,
                                ...) __attribute__((format(printf, 4, 5)));

/**
 * @brief Tells whether operation tracing is on.
 * @return non-zero if it is on
 */
SWCTL_API int32_t sys_trace_get(void);

/**
 * @brief Adds one record to the operation trace.
 *
 * @param location where it happened, "function():line". The line is one of
 *                 libswctl's source; it differs between versions, so do not
 *                 rely on it.
 * @param message  what happened, at most 255 characters
 */
SWCTL_API void sys_trace_add_log(const char *location, const char *message);

/**
 * @brief The platform's own text for one of its result codes. Optional.
 *
 * The library does not call it. Tools look up the name at run time and print
 * only the number if the platform does not have this function.
 *
 * @param result a result of an SDK or adapter call
 * @return a constant text without a line end, or null for an unknown code
 */
SWCTL_API const char *swctl_platform_result_text(int32_t result);

/**
 * @brief Tells whether the platform can be used at all. Optional.
 *
 * The library does not call it. A tool calls it before its first call of the
 * platform and reports a fault itself, in one line; the platform then does not
 * report it.
 *
 * @return null, or the reason why no call can succeed: a text without a line
 *         end, valid until the next call
 */
SWCTL_API const char *swctl_platform_open(void);

SWCTL_END_DECLS

#endif
