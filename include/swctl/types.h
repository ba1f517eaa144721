/* SPDX-License-Identifier: MIT */
/**
 * @file types.h
 * @brief Shared types and the linkage macros of every libswctl header.
 */
#ifndef SWCTL_TYPES_H
#define SWCTL_TYPES_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#define SWCTL_BEGIN_DECLS extern "C" {
#define SWCTL_END_DECLS }
#else
#define SWCTL_BEGIN_DECLS
#define SWCTL_END_DECLS
#endif

/** Marks a name as part of the library's binary interface. */
#define SWCTL_API __attribute__((visibility("default")))

/** The front ports are the logical interfaces 1 to this number. */
#define USER_FRONT_INTERFACES 26

/** Bytes of an Ethernet address. */
#define SWCTL_MAC_BYTES 6

/** Words of a ::user_pbmp_t. */
#define USER_PBMP_WORDS 8

/**
 * @brief The caller's port bitmap: 256 ports.
 *
 * Port n is bit (n mod 32), least significant first, of word (n div 32). Each
 * function says whether n is a logical interface or a chip port.
 */
struct user_pbmp_t {
  uint32_t word[USER_PBMP_WORDS];
};
typedef struct user_pbmp_t user_pbmp_t;

/**
 * @brief A 64-bit counter value as two words, the most significant first.
 *
 * The words are in this order on every machine.
 */
struct user_counter_t {
  uint32_t high;
  uint32_t low;
};
typedef struct user_counter_t user_counter_t;

#endif
