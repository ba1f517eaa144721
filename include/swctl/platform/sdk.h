/* SPDX-License-Identifier: MIT */
/**
 * @file sdk.h
 * @brief The calls of the chip vendor's SDK that libswctl makes.
 *
 * Declarations only. On the board, the vendor's libraries provide them; on a
 * PC, libswctl-vchip does. Each call returns a signed 32-bit result; a
 * negative result means failure. The list of the calls is calls/sdk.def.
 */
#ifndef SWCTL_PLATFORM_SDK_H
#define SWCTL_PLATFORM_SDK_H

#include <swctl/platform/field_records.h>
#include <swctl/platform/l2_records.h>
#include <swctl/platform/mcast_records.h>
#include <swctl/platform/mirror_records.h>
#include <swctl/platform/port_records.h>
#include <swctl/platform/trap_records.h>
#include <swctl/platform/trunk_records.h>
#include <swctl/platform/vlan_records.h>
#include <swctl/types.h>

SWCTL_BEGIN_DECLS

#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) SWCTL_API int32_t name(SWCTL_PARAMETERS(__VA_ARGS__));
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>

SWCTL_END_DECLS

#endif
