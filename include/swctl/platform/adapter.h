/* SPDX-License-Identifier: MIT */
/**
 * @file adapter.h
 * @brief The calls of the platform adapter that libswctl makes.
 *
 * Declarations only; sdk.h says who provides them. The list of the calls is
 * calls/adapter.def.
 */
#ifndef SWCTL_PLATFORM_ADAPTER_H
#define SWCTL_PLATFORM_ADAPTER_H

#include <swctl/platform/adapter_records.h>
#include <swctl/types.h>

SWCTL_BEGIN_DECLS

#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) SWCTL_API int32_t name(SWCTL_PARAMETERS(__VA_ARGS__));
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls_end.h>

SWCTL_END_DECLS

#endif
