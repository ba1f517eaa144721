/* SPDX-License-Identifier: MIT */
/**
 * @file mcast_records.h
 * @brief Records of the SDK's IP multicast calls.
 *
 * The SDK defines which of the two addresses is the group and which the
 * source. They are named after the order in which callers of libswctl pass
 * them: a, then b.
 */
#ifndef SWCTL_PLATFORM_MCAST_RECORDS_H
#define SWCTL_PLATFORM_MCAST_RECORDS_H

#include <swctl/types.h>

/**
 * @name Lookup types
 * @{
 */
#define CHIP_LOOKUP_IP_MCAST 0u
#define CHIP_LOOKUP_IP6_MCAST 1u
/** @} */

/** @brief An IPv6 address, first byte first. */
struct chip_ip6_address {
  uint8_t bytes[16];
};
typedef struct chip_ip6_address chip_ip6_address;

/** @brief An IPv4 multicast entry, seven words. */
struct chip_ip_mcast_entry {
  uint16_t vid;
  uint16_t zero;
  uint32_t address_b;
  uint32_t address_a;
  uint32_t ports; /**< bit p: chip port p */
  uint32_t rest[3];
};
typedef struct chip_ip_mcast_entry chip_ip_mcast_entry;

/** @brief An IPv6 multicast entry, 52 bytes. */
struct chip_ip6_mcast_entry {
  uint16_t vid;
  chip_ip6_address address_b;
  chip_ip6_address address_a;
  uint16_t zero;
  uint32_t ports; /**< bit p: chip port p */
  uint32_t rest[3];
};
typedef struct chip_ip6_mcast_entry chip_ip6_mcast_entry;

#endif
