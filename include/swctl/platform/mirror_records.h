/* SPDX-License-Identifier: MIT */
/**
 * @file mirror_records.h
 * @brief Records of the SDK's mirroring calls.
 */
#ifndef SWCTL_PLATFORM_MIRROR_RECORDS_H
#define SWCTL_PLATFORM_MIRROR_RECORDS_H

#include <swctl/types.h>

/**
 * @brief One mirror group: what is mirrored, and to where.
 *
 * Fifteen words. libswctl reads a group, changes some fields and writes it
 * back; the fields that are numbered here keep what the chip held, except
 * that mirroring sets fields 7, 12 and 15 to 1.
 */
struct chip_mirror_entry {
  uint32_t enable;
  uint32_t mirroring_port; /**< chip port that gets the copies */
  uint32_t ingress;        /**< bit p: what chip port p receives */
  uint32_t egress;         /**< bit p: what chip port p sends */
  uint32_t field5;
  uint32_t field6;
  uint32_t field7;
  uint32_t field8;
  uint32_t field9;
  uint32_t field10;
  uint32_t field11;
  uint32_t field12; /**< set when chip port 28 is mirrored */
  uint32_t field13;
  uint32_t field14;
  uint32_t field15; /**< flows that rules choose are mirrored */
};
typedef struct chip_mirror_entry chip_mirror_entry;

#endif
