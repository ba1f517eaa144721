/* SPDX-License-Identifier: MIT */
/**
 * @file trunk_records.h
 * @brief Codes of the SDK's calls on trunks.
 */
#ifndef SWCTL_PLATFORM_TRUNK_RECORDS_H
#define SWCTL_PLATFORM_TRUNK_RECORDS_H

#include <swctl/types.h>

/** The distribution algorithm that libswctl sets up. */
#define CHIP_TRUNK_ALGORITHM 0u

/**
 * @name Header fields that an algorithm can hash
 * @{
 */
#define CHIP_TRUNK_HASH_SOURCE_PORT 1u /**< libswctl never asks for it */
#define CHIP_TRUNK_HASH_SOURCE_MAC 2u
#define CHIP_TRUNK_HASH_DESTINATION_MAC 4u
#define CHIP_TRUNK_HASH_SOURCE_IP 8u
#define CHIP_TRUNK_HASH_DESTINATION_IP 16u
/** @} */

#endif
