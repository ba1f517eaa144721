/* SPDX-License-Identifier: MIT */
/**
 * @file l2_dump.h
 * @brief The layer-2 address table in a file or on standard output.
 *
 * Part of l2.h, whose rules apply.
 *
 * **Dump files.** A file is a sequence of the chip's records in scan order, as
 * they are in memory: ::chip_l2_ucast_entry (52 bytes each) or
 * ::chip_l2_mcast_entry (28 bytes each). There is no header, no count and no
 * trailer. The byte order is the machine's, big-endian on the device. If bit 0
 * of a unicast record's state word is set, ::L2_FLAG_VIOLATION is set in its
 * flags. An empty table gives an empty file.
 *
 * A file is written in place: a program that reads it meanwhile sees a part of
 * it. A failed write is not reported; the file is then too short. A partial
 * record at the end reads as the end of the file.
 */
#ifndef SWCTL_L2_DUMP_H
#define SWCTL_L2_DUMP_H

#include <swctl/l2.h>

#include <stdio.h>

SWCTL_BEGIN_DECLS

/**
 * @brief Writes the unicast entries of unit 0 to a file.
 *
 * Opens `path` with mode "w+", calls rtk_l2_traverse(0, test_fun3_callback,
 * file) and closes the file. As in every walk over unicast entries, stale
 * entries are removed from the chip and not written. If the file cannot be
 * opened, prints "create mactable Error!!!!!!!!!!!!1" with a line end on
 * standard output.
 *
 * @param lead ignored
 * @param path the file, which is made, or emptied first
 * @return the walk's result, 0; -1 if the file cannot be opened
 */
SWCTL_API int32_t user_mac_table_show(uint32_t lead, const char *path);

/**
 * @brief Writes the multicast entries of unit 0 to a file.
 *
 * Opens `path` with mode "w+", calls rtk_l2_mcast_traverse(0,
 * test_fun4_callback, file) and closes the file. This walk removes nothing:
 * entries whose VLAN does not exist are written too. If the file cannot be
 * opened, prints what user_mac_table_show() prints.
 *
 * @param lead ignored
 * @param path the file, which is made, or emptied first
 * @return the walk's result, 0; -1 if the file cannot be opened
 */
SWCTL_API int32_t user_mac_mcast_table_show(uint32_t lead, const char *path);

/**
 * @brief Reads one record of a dump file.
 *
 * @param out   for a unicast dump a ::user_l2_addr_t, which receives flags
 *              (with ::L2_FLAG_VIOLATION if bit 0 of the state word is set),
 *              mac, vid, port, tgid and aux; for a multicast dump a
 *              ::User_mcast_addr_t, which receives mac, vid and pbmp. Nothing
 *              else is written, and nothing at all if no record was read.
 * @param file  open for reading; the caller opens and closes it
 * @param mcast 0 for a unicast dump, anything else for a multicast dump
 * @return 1, or 0 at the end of the file and for a partial record
 */
SWCTL_API int32_t user_l2_mactable_fread(void *out, FILE *file, uint32_t mcast);

/**
 * @brief Prints a unicast entry on standard output, in one line.
 *
 * "MAC_ADDR=02:00:5e:00:00:01, VLAN_TAG=0xa, PORT=3, TGID=0 FLAGS=0x00000008".
 *
 * @param entry the entry
 * @return the result of the last printf()
 */
SWCTL_API int32_t user_bcm_l2_addr_dumptest(const chip_l2_ucast_entry *entry);

/**
 * @brief Walk callback: prints the entry with user_bcm_l2_addr_dumptest().
 * @param unit  ignored
 * @param entry the entry
 * @param data  ignored
 * @return 0, always
 */
SWCTL_API int32_t test_fun_callback(uint32_t unit, chip_l2_ucast_entry *entry, void *data);

/**
 * @brief Walk callback: writes the entry to a file, as one item of 52 bytes.
 * @param unit  ignored
 * @param entry the entry
 * @param data  the open file, a FILE
 * @return the number of items written: 1, or 0 if the write failed, which does
 *         not end the walk
 */
SWCTL_API int32_t test_fun3_callback(uint32_t unit, chip_l2_ucast_entry *entry, void *data);

/**
 * @brief Multicast walk callback: writes the entry, as one item of 28 bytes.
 * @param unit  ignored
 * @param entry the entry
 * @param data  the open file, a FILE
 * @return the number of items written, 1 or 0
 */
SWCTL_API int32_t test_fun4_callback(uint32_t unit, chip_l2_mcast_entry *entry, void *data);

SWCTL_END_DECLS

#endif
