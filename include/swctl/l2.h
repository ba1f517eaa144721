/* SPDX-License-Identifier: MIT */
/**
 * @file l2.h
 * @brief The layer-2 address table.
 *
 * The records and constants of the whole family are here; its functions are in
 * the headers that this one includes:
 * - l2_walk.h: walking the table, entry by entry
 * - l2_addr.h: adding, reading and deleting single entries
 * - l2_delete.h: deleting many entries at once
 * - l2_learn.h: learning limits, aging, violations
 * - l2_dump.h: the table in a file or on standard output
 *
 * The rules in frame.h apply, with these differences:
 * - Every SDK call goes to unit 0, whatever unit the caller passed. The only
 *   exceptions are the functions of l2_walk.h that read multicast entries.
 * - Ports are the chip's physical ports and go to the SDK unchanged.
 * - An address argument points to six bytes, first byte first (IEEE 802).
 *
 * **The operation log.** Functions that add or remove static entries log it
 * where they say so. The text is "User add static MAC xx:xx:xx:xx:xx:xx into
 * network system" or "User remove static MAC xx:xx:xx:xx:xx:xx from network
 * system", with a line end. If sys_trace_get() returns non-zero, the text goes
 * to sys_trace_add_log() with a location of the form "function():line"; the
 * line differs between versions of this library. In every case the text goes
 * to Log_logging_func() at level 6 with the tag "STATIC-MAC".
 *
 * **Threads.** Each call keeps its place in the table on its own stack, so any
 * number of calls may run at the same time. A walk that runs while the table
 * changes sees whatever the chip's scan returns.
 */
#ifndef SWCTL_L2_H
#define SWCTL_L2_H

#include <swctl/platform/l2_records.h>
#include <swctl/types.h>

/**
 * @name Entry flags
 * Bits of the flags in ::chip_l2_ucast_entry and ::user_l2_addr_t. Bits
 * without a name are the chip's and are copied unchanged.
 * @{
 */
/** Set: configured, not learned. */
#define USER_L2_FLAG_STATIC 0x08u
/** Excludes an entry from the violation count and the violation delete. */
#define USER_L2_FLAG_VIOLATION_IGNORED 0x20u
/** Set by the library in an entry whose state word has bit 0 set. */
#define L2_FLAG_VIOLATION 0x800000u
/** @} */

/** Bit of the state word that becomes ::L2_FLAG_VIOLATION. */
#define USER_L2_STATE_VIOLATION 0x1u

/**
 * @brief Tests whether flags are those of a static entry.
 *
 * True if ::USER_L2_FLAG_STATIC is the only bit set of 0x0E. If 0x02 or 0x04
 * is set as well, the entry is neither static nor dynamic: only deletes of
 * every entry remove it, and its removal is not logged.
 */
#define STATIC_ENTRY_TEST(flags) (((flags)&0x0Eu) == USER_L2_FLAG_STATIC)

SWCTL_BEGIN_DECLS

/**
 * @brief The caller's layer-2 address record. 88 bytes.
 *
 * A function that reads an entry writes flags, mac, vid, port, tgid and aux
 * unless it says otherwise. The reserved members are never written.
 */
struct user_l2_addr_t {
  uint32_t flags;               /**< the chip's flags, and ::L2_FLAG_VIOLATION */
  uint8_t mac[SWCTL_MAC_BYTES]; /**< address */
  uint16_t vid;                 /**< VLAN ID */
  int32_t port;                 /**< chip port */
  int32_t reserved1;
  int32_t tgid; /**< trunk group id */
  uint32_t reserved2[2];
  uint32_t aux;     /**< the chip's aux word */
  user_pbmp_t pbmp; /**< chip ports of a multicast entry */
  uint32_t reserved3[4];
  uint32_t extra; /**< copied to the last word of an entry that is added */
};
typedef struct user_l2_addr_t user_l2_addr_t;

SWCTL_END_DECLS

/* The parts use the records above. */
#include <swctl/l2_addr.h>
#include <swctl/l2_delete.h>
#include <swctl/l2_dump.h>
#include <swctl/l2_learn.h>
#include <swctl/l2_walk.h>

SWCTL_BEGIN_DECLS

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0. The
 * sentence says what the call is for on a device that offers it.
 * @{
 */
/** Empties the address table. */
SWCTL_API int32_t user_mac_table_clear(uint32_t lead, ...);
/** Replaces the addresses that match a record. */
SWCTL_API int32_t user_mac_addr_replace(uint32_t lead, ...);
/** Prepares an address record. */
SWCTL_API int32_t user_mac_addr_init(uint32_t lead, ...);
/** The number of entries in the layer-2 cache. */
SWCTL_API int32_t user_l2_cache_size_get(uint32_t lead, ...);
/** @} */

SWCTL_END_DECLS

#endif
