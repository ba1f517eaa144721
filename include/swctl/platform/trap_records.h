/* SPDX-License-Identifier: MIT */
/**
 * @file trap_records.h
 * @brief Codes of the SDK's calls on trapped frames.
 *
 * The SDK's numbers have no names of their own; these are libswctl's.
 */
#ifndef SWCTL_PLATFORM_TRAP_RECORDS_H
#define SWCTL_PLATFORM_TRAP_RECORDS_H

#include <swctl/types.h>

/**
 * @name Types of management frames
 * @{
 */
#define CHIP_TRAP_FRAME_MLD 4u
#define CHIP_TRAP_FRAME_IGMP 5u
#define CHIP_TRAP_FRAME_BPDU 19u
#define CHIP_TRAP_FRAME_LLDP 21u
#define CHIP_TRAP_FRAME_OWN_MAC 24u
/** @} */

/**
 * @name Groups of reserved multicast addresses
 * @{
 */
#define CHIP_TRAP_GROUP_OAM 0u
#define CHIP_TRAP_GROUP_LACP 1u
/** @} */

/** Slow protocols, a type of frames that can pass a blocked port. */
#define CHIP_TRAP_BYPASS_SLOW_PROTOCOLS 6u

/**
 * @name What becomes of a frame
 * @{
 */
#define CHIP_TRAP_FORWARD 0u
#define CHIP_TRAP_DROP 1u
#define CHIP_TRAP_TO_CPU 2u
/** @} */

#endif
