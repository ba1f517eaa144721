/* SPDX-License-Identifier: MIT */
/**
 * @file ability.h
 * @brief Words and codes of a port as the virtual chip reads them.
 */
#ifndef SWCTL_VCHIP_ABILITY_H
#define SWCTL_VCHIP_ABILITY_H

/**
 * @name Ability word
 * What a port or its partner advertises, or the mode a partner is forced to.
 * The other bits are reserved and refused.
 * @{
 */
#define VCHIP_ABILITY_10_HALF 0x80000000u
#define VCHIP_ABILITY_10_FULL 0x40000000u
#define VCHIP_ABILITY_100_HALF 0x20000000u
#define VCHIP_ABILITY_100_FULL 0x10000000u
#define VCHIP_ABILITY_1000_HALF 0x08000000u
#define VCHIP_ABILITY_1000_FULL 0x04000000u
#define VCHIP_ABILITY_PAUSE 0x02000000u
#define VCHIP_ABILITY_ASYMMETRIC_PAUSE 0x01000000u

/** The bits that are modes: a speed and a duplex. */
#define VCHIP_ABILITY_MODES 0xFC000000u
/** Every bit that has a meaning. */
#define VCHIP_ABILITY_ALL 0xFF000000u
/** What a port advertises after power-on, and what vchipctl plugs in. */
#define VCHIP_ABILITY_USUAL                                                 \
  (VCHIP_ABILITY_10_HALF | VCHIP_ABILITY_10_FULL | VCHIP_ABILITY_100_HALF | \
   VCHIP_ABILITY_100_FULL | VCHIP_ABILITY_1000_FULL | VCHIP_ABILITY_PAUSE)
/** @} */

/**
 * @name Speed codes
 * Codes up to ::VCHIP_SPEED_MAX are stored; only the first three can link.
 * @{
 */
#define VCHIP_SPEED_10 0u
#define VCHIP_SPEED_100 1u
#define VCHIP_SPEED_1000 2u
#define VCHIP_SPEED_MAX 4u
/** @} */

#define VCHIP_DUPLEX_HALF 0u
#define VCHIP_DUPLEX_FULL 1u

/**
 * @name Crossover modes
 * @{
 */
#define VCHIP_CROSSOVER_AUTO 0u
#define VCHIP_CROSSOVER_STRAIGHT 1u
#define VCHIP_CROSSOVER_CROSSED 2u
/** @} */

#define VCHIP_MEDIUM_COPPER 0u
#define VCHIP_MEDIUM_FIBRE 1u

#endif
