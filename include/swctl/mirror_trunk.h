/* SPDX-License-Identifier: MIT */
/**
 * @file mirror_trunk.h
 * @brief Mirroring and trunk groups.
 *
 * The laws in frame.h hold throughout.
 */
#ifndef SWCTL_MIRROR_TRUNK_H
#define SWCTL_MIRROR_TRUNK_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0.
 * The sentence says what the call is for on a device that offers it.
 * @{
 */
/** Prepares mirroring. */
SWCTL_API int32_t user_mirror_init(uint32_t lead, ...);
/** Chooses how mirroring works: off, by port, by flow. */
SWCTL_API int32_t user_mirror_mode_set(uint32_t lead, ...);
/** How mirroring works. */
SWCTL_API int32_t user_mirror_mode_get(uint32_t lead, ...);
/** What is mirrored of a port. */
SWCTL_API int32_t user_mirror_port_get(uint32_t lead, ...);
/** Prepares trunking. */
SWCTL_API int32_t user_trunk_init(uint32_t lead, ...);
/** Makes a trunk with a certain number. */
SWCTL_API int32_t user_trunk_create_id(uint32_t lead, ...);
/** The trunk that a port belongs to. */
SWCTL_API int32_t user_trunk_port_get(uint32_t lead, ...);
/** Adds a port to a trunk. */
SWCTL_API int32_t user_trunk_port_add(uint32_t lead, ...);
/** Takes a port out of its trunk. */
SWCTL_API int32_t user_trunk_port_delete(uint32_t lead, ...);
/** Tells the kernel's switch module about the trunks. */
SWCTL_API int32_t user_trunk_send_data_to_kernel(uint32_t lead, ...);
/** @} */

SWCTL_END_DECLS

#endif
