/* SPDX-License-Identifier: MIT */
/**
 * @file l2_records.h
 * @brief The layer-2 records that travel between libswctl and the SDK.
 *
 * Their layout is the SDK's. The entry records also lie in dump files as they
 * lie in memory, in the byte order of the machine.
 */
#ifndef SWCTL_PLATFORM_L2_RECORDS_H
#define SWCTL_PLATFORM_L2_RECORDS_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @brief One unicast entry of the chip's layer-2 table. 52 bytes.
 */
struct chip_l2_ucast_entry {
  uint32_t vid;                 /**< VLAN id */
  uint8_t mac[SWCTL_MAC_BYTES]; /**< first byte first */
  uint8_t padding[2];           /**< zero */
  int32_t port;                 /**< chip port that it was learned on or is bound to */
  int32_t trunk;                /**< trunk group id */
  uint32_t flags;               /**< the chip's entry flags, USER_L2_FLAG_* */
  uint32_t state;               /**< bit 0 marks a violation */
  uint32_t aux;                 /**< carried, never looked at */
  uint32_t rest[4];             /**< zero in an entry that the library builds */
  uint32_t extra;               /**< carried by an add */
};
typedef struct chip_l2_ucast_entry chip_l2_ucast_entry;

/**
 * @brief One multicast entry of the chip's layer-2 table. 28 bytes.
 */
struct chip_l2_mcast_entry {
  uint16_t vid;                 /**< VLAN id */
  uint8_t mac[SWCTL_MAC_BYTES]; /**< group address, first byte first */
  uint32_t portmask;            /**< bit i is chip port i */
  uint32_t fwdIndex;            /**< the chip's forwarding port-mask entry */
  uint32_t rest[3];             /**< zero in an entry that the library builds */
};
typedef struct chip_l2_mcast_entry chip_l2_mcast_entry;

/**
 * @brief What a flush of unicast entries is to remove. Eight 32-bit words.
 */
struct chip_l2_flush_request {
  uint32_t reserved;        /**< 0 */
  uint32_t byVlan;          /**< 1: only entries of `vid` */
  uint32_t vid;             /**< VLAN id, else 0 */
  uint32_t byInterface;     /**< 1: only entries of `portOrTrunk` */
  uint32_t interfaceIsPort; /**< 1: that is a chip port, 0: a trunk group */
  uint32_t portOrTrunk;     /**< chip port or trunk group id, else 0 */
  uint32_t reserved2;       /**< 0 */
  uint32_t includeStatic;   /**< 1: static entries too */
};
typedef struct chip_l2_flush_request chip_l2_flush_request;

SWCTL_END_DECLS

#endif
