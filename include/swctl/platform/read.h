/* SPDX-License-Identifier: MIT */
/**
 * @file read.h
 * @brief Reading settings that the SDK calls of libswctl only write, or read
 *        without telling an end from a failure. Optional.
 *
 * The library calls none of these functions, and a platform may have any of
 * them or none. Tools look up each name at run time and say what is missing.
 * docs/platform-reading.md says which command needs which function.
 *
 * - A function changes nothing.
 * - Values are those that the SDK call takes that writes the setting: chip
 *   ports, masks of chip ports, and the chip's own codes.
 * - The result is 0, or a negative result of the platform's own; in that case
 *   no output is written.
 * - A function whose name ends in _next() reads a table. It finds the first
 *   entry from an index on that is not empty, and fills a record that begins
 *   with the entry's index. If there is none, that index is -1 and the result
 *   is 0. An index below 0 is a failure; an index after the end of the table
 *   is not.
 * - A record is written completely; members that do not apply are 0.
 */
#ifndef SWCTL_PLATFORM_READ_H
#define SWCTL_PLATFORM_READ_H

#include <swctl/platform/field_read.h>
#include <swctl/platform/l2_read.h>
#include <swctl/platform/mcast_read.h>
#include <swctl/platform/port_read.h>
#include <swctl/platform/qos_read.h>
#include <swctl/platform/trap_read.h>
#include <swctl/platform/trunk_read.h>
#include <swctl/platform/vlan_read.h>

#endif
