/* SPDX-License-Identifier: MIT */
/**
 * @file mirror_records.h
 * @brief Records of the SDK's mirroring calls.
 */
#ifndef SWCTL_PLATFORM_MIRROR_RECORDS_H
#define SWCTL_PLATFORM_MIRROR_RECORDS_H

#include <swctl/types.h>

/**
 * @brief A mirror group: what is mirrored, and to which port.
 *
 * Fifteen words. libswctl reads a group, changes some fields and writes it
 * back. The fields without a name keep what the chip held, but mirroring sets
 * fields 7, 12 and 15 to 1. libswctl never sets these back to 0.
 */
struct chip_mirror_entry {
  uint32_t enable;
  uint32_t mirroring_port; /**< destination chip port of the copies */
  uint32_t ingress;        /**< bit p: frames that chip port p receives are mirrored */
  uint32_t egress;         /**< bit p: frames that chip port p sends are mirrored */
  uint32_t field5;
  uint32_t field6;
  uint32_t field7;
  uint32_t field8;
  uint32_t field9;
  uint32_t field10;
  uint32_t field11;
  uint32_t field12; /**< set to 1 when chip port 28 is mirrored */
  uint32_t field13;
  uint32_t field14;
  uint32_t field15; /**< 1: flows that rules select are mirrored */
};
typedef struct chip_mirror_entry chip_mirror_entry;

#endif
