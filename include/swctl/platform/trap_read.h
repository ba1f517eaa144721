/* SPDX-License-Identifier: MIT */
/**
 * @file trap_read.h
 * @brief Reading what becomes of protocol frames. Optional; read.h has the
 *        rules.
 */
#ifndef SWCTL_PLATFORM_TRAP_READ_H
#define SWCTL_PLATFORM_TRAP_READ_H

#include <swctl/platform/trap_records.h>
#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @brief Reads what becomes of management frames, switch-wide.
 *
 * @param unit   switch unit
 * @param type   one of CHIP_TRAP_FRAME_*
 * @param action receives the value last passed to
 *               rtk_trap_mgmtFrameAction_set()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_trap_frame_get(uint32_t unit, uint32_t type, uint32_t *action);

/**
 * @brief Reads what becomes of management frames of an ingress port.
 *
 * @param unit   switch unit
 * @param port   chip port
 * @param type   one of CHIP_TRAP_FRAME_*
 * @param action receives the value last passed to
 *               rtk_trap_portMgmtFrameAction_set()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_trap_port_frame_get(uint32_t unit, int32_t port, uint32_t type,
                                                     uint32_t *action);

/**
 * @brief Reads what becomes of frames to a group of reserved multicast
 *        addresses.
 *
 * @param unit   switch unit
 * @param group  one of CHIP_TRAP_GROUP_*
 * @param action receives the value last passed to
 *               rtk_trap_rmaGroupAction_set()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_trap_group_get(uint32_t unit, uint32_t group, uint32_t *action);

/**
 * @brief Reads whether frames of a type pass a port that spanning tree blocks.
 *
 * @param unit   switch unit
 * @param type   ::CHIP_TRAP_BYPASS_SLOW_PROTOCOLS
 * @param enable receives the value last passed to rtk_trap_bypassStp_set()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_trap_bypass_get(uint32_t unit, uint32_t type, uint32_t *enable);

SWCTL_END_DECLS

#endif
