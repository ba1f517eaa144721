/* SPDX-License-Identifier: MIT */
/* A program that declares every narrow argument as a word. It includes none of
   the library's headers that declare functions: theirs are narrow. */
#include "callers.h"

uint8_t output[128];
const uint8_t static_mac[SWCTL_MAC_BYTES] = {2, 0, 0, 0, 0, 1};
const uint8_t dynamic_mac[SWCTL_MAC_BYTES] = {2, 0, 0, 0, 0, 2};
const uint8_t group_mac[SWCTL_MAC_BYTES] = {1, 0, 0x5E, 0, 0, 5};
static const uint8_t ip6_address[16] = {0xFF, 2};
/* Interface 0 among them, where the walks over one VLAN begin. */
static const user_pbmp_t ports = {{0x7}};

#define NARROW(function, parameter, bits, base, types, arguments) \
  extern int32_t function types;                                  \
  static int32_t function##_##parameter(uint32_t word) {          \
    return function arguments;                                    \
  }
#define NARROW_SOME NARROW
#include "narrow.def"
#undef NARROW
#undef NARROW_SOME

const struct narrow_argument narrow_arguments[] = {
#define NARROW(function, parameter, bits, base, types, arguments) \
  {#function, #parameter, bits, base, 1, function##_##parameter},
#define NARROW_SOME(function, parameter, bits, base, types, arguments) \
  {#function, #parameter, bits, base, 0, function##_##parameter},
#include "narrow.def"
    {0, 0, 0, 0, 0, 0}};
