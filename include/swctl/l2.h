/* SPDX-License-Identifier: MIT */
/**
 * @file l2.h
 * @brief The layer-2 address table.
 *
 * The laws in frame.h hold throughout.
 */
#ifndef SWCTL_L2_H
#define SWCTL_L2_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0.
 * The sentence says what the call is for on a device that offers it.
 * @{
 */
/** Empties the address table. */
SWCTL_API int32_t user_mac_table_clear(uint32_t lead, ...);
/** Moves the addresses that match one record to another. */
SWCTL_API int32_t user_mac_addr_replace(uint32_t lead, ...);
/** Prepares an address record. */
SWCTL_API int32_t user_mac_addr_init(uint32_t lead, ...);
/** The number of addresses whose frames are looked up first. */
SWCTL_API int32_t user_l2_cache_size_get(uint32_t lead, ...);
/** @} */

SWCTL_END_DECLS

#endif
