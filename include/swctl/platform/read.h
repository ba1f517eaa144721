/* SPDX-License-Identifier: MIT */
/**
 * @file read.h
 * @brief What a platform can say about settings that the SDK calls of
 *        libswctl only write, or read without telling an end from a failure.
 *        Optional.
 *
 * The library calls none of these functions, and a platform may have any of
 * them or none. Tools look each name up when they run and say what is missing.
 * docs/platform-reading.md says which command asks for which function.
 *
 * - A function looks and changes nothing.
 * - Values are those that the writing SDK call takes: chip ports, masks of
 *   chip ports, and the chip's own codes.
 * - The result is 0, or a negative one of the platform's own; then no output
 *   is written.
 * - A function that ends in _next() reads a table. It finds the first entry
 *   from an index on that holds anything and fills a record that begins with
 *   the entry's index: -1 if there is none, which is no failure. An index below
 *   0 is a failure, one behind the end of the table is not.
 * - A record is written whole; what does not apply is 0.
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
