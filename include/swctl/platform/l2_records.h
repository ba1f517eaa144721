/* SPDX-License-Identifier: MIT */
/**
 * @file l2_records.h
 * @brief The layer-2 records that libswctl and the SDK exchange.
 *
 * Their layout is the SDK's. Dump files contain the entry records as they are
 * in memory, in the byte order of the machine.
 */
#ifndef SWCTL_PLATFORM_L2_RECORDS_H
#define SWCTL_PLATFORM_L2_RECORDS_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @brief A unicast entry of the chip's layer-2 table. 52 bytes.
 */
struct chip_l2_ucast_entry {
  uint32_t vid;                 /**< VLAN ID */
  uint8_t mac[SWCTL_MAC_BYTES]; /**< first byte first */
  uint8_t padding[2];           /**< zero */
  int32_t port;                 /**< chip port that it was learned or configured on */
  int32_t trunk;                /**< trunk group ID */
  uint32_t flags;               /**< the chip's entry flags, USER_L2_FLAG_* */
  uint32_t state;               /**< bit 0 marks a violation */
  uint32_t aux;                 /**< copied, never interpreted */
  uint32_t rest[4];             /**< zero in an entry that the library builds */
  uint32_t extra;               /**< set when the entry is added */
};
typedef struct chip_l2_ucast_entry chip_l2_ucast_entry;

/**
 * @brief A multicast entry of the chip's layer-2 table. 28 bytes.
 */
struct chip_l2_mcast_entry {
  uint16_t vid;                 /**< VLAN ID */
  uint8_t mac[SWCTL_MAC_BYTES]; /**< group address, first byte first */
  uint32_t portmask;            /**< bit i is chip port i */
  uint32_t fwdIndex;            /**< index of the chip's forwarding port mask */
  uint32_t rest[3];             /**< zero in an entry that the library builds */
};
typedef struct chip_l2_mcast_entry chip_l2_mcast_entry;

/**
 * @brief Which unicast entries a flush removes. Eight 32-bit words.
 */
struct chip_l2_flush_request {
  uint32_t reserved;        /**< 0 */
  uint32_t byVlan;          /**< 1: only entries of `vid` */
  uint32_t vid;             /**< VLAN ID, else 0 */
  uint32_t byInterface;     /**< 1: only entries of `portOrTrunk` */
  uint32_t interfaceIsPort; /**< 1: that is a chip port, 0: a trunk group */
  uint32_t portOrTrunk;     /**< chip port or trunk group ID, else 0 */
  uint32_t reserved2;       /**< 0 */
  uint32_t includeStatic;   /**< 1: static entries too */
};
typedef struct chip_l2_flush_request chip_l2_flush_request;

SWCTL_END_DECLS

#endif
