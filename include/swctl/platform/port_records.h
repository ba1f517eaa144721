/* SPDX-License-Identifier: MIT */
/**
 * @file port_records.h
 * @brief Records of the SDK's port calls, and the SDK's counters.
 */
#ifndef SWCTL_PLATFORM_PORT_RECORDS_H
#define SWCTL_PLATFORM_PORT_RECORDS_H

#include <swctl/types.h>

/** Wire pairs of a copper port, A to D. */
#define CHIP_CABLE_PAIRS 4

/**
 * @brief Result of a cable test: 21 words.
 *
 * Each group has a word per pair, A to D; a flag is set if it is not 0. The
 * SDK gives the groups no names; these are named after what the library
 * reports for them, which is this project's reading.
 */
struct chip_cable_test_t {
  uint32_t unused; /**< not read by the library */
  uint32_t shorted[CHIP_CABLE_PAIRS];
  uint32_t open[CHIP_CABLE_PAIRS];
  uint32_t mismatch[CHIP_CABLE_PAIRS];
  uint32_t crosstalk[CHIP_CABLE_PAIRS];
  uint32_t length[CHIP_CABLE_PAIRS]; /**< to the fault or the end, in 1/100 m */
};
typedef struct chip_cable_test_t chip_cable_test_t;

/**
 * @name Counter identifiers
 * The counters that the library reads by number, and those of octets and sent
 * packets. The virtual chip has ::CHIP_PORT_COUNTERS counters; those without a
 * name have no meaning there. The names are this project's reading.
 * @{
 */
#define CHIP_COUNTER_RX_OCTETS 0u
#define CHIP_COUNTER_RX_UNICAST 1u
#define CHIP_COUNTER_RX_MULTICAST 2u
#define CHIP_COUNTER_RX_BROADCAST 3u
#define CHIP_COUNTER_TX_OCTETS 4u
#define CHIP_COUNTER_TX_UNICAST 5u
#define CHIP_COUNTER_TX_MULTICAST 6u
#define CHIP_COUNTER_TX_BROADCAST 7u
#define CHIP_COUNTER_SYMBOL_ERRORS 21u
#define CHIP_COUNTER_FRAGMENTS 34u
#define CHIP_COUNTER_OVERSIZE 41u
#define CHIP_COUNTER_CHECKSUM_ERRORS 45u
/** Number of a port's counters; identifiers are below it. */
#define CHIP_PORT_COUNTERS 48
/** @} */

/**
 * @brief All counters of a port, by identifier.
 *
 * This is the virtual chip's record. Another platform may have another one;
 * the library passes the caller's pointer to the SDK and does not access the
 * record.
 */
struct chip_port_counters_t {
  user_counter_t value[CHIP_PORT_COUNTERS];
};
typedef struct chip_port_counters_t chip_port_counters_t;

#endif
