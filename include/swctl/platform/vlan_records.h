/* SPDX-License-Identifier: MIT */
/**
 * @file vlan_records.h
 * @brief Records of the SDK's VLAN calls.
 */
#ifndef SWCTL_PLATFORM_VLAN_RECORDS_H
#define SWCTL_PLATFORM_VLAN_RECORDS_H

#include <swctl/types.h>

/**
 * @brief An entry of the egress VLAN conversion table: what a frame must match
 *        at the egress, and its new VLAN ID.
 *
 * Fields 6, 7, 10, 11, 13 and 14 have no name; libswctl writes 0.
 */
struct chip_vlan_egress_entry {
  uint32_t valid;
  uint8_t ignore_vid;
  uint32_t vid;
  uint8_t ignore_second_key;
  uint32_t second_key;
  uint32_t field6;
  uint32_t field7;
  uint8_t ignore_port;
  uint32_t port; /**< chip port */
  uint32_t field10;
  uint32_t field11;
  uint32_t new_vid;
  uint32_t field13;
  uint32_t field14;
};
typedef struct chip_vlan_egress_entry chip_vlan_egress_entry;

#endif
