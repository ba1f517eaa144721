// SPDX-License-Identifier: MIT
// The values that rules match, as words of the command line and as the chip
// has them.
#ifndef SWCTL_SHELL_ACL_MATCH_VALUE_H
#define SWCTL_SHELL_ACL_MATCH_VALUE_H

#include <swctl/types.h>

#include <array>
#include <cstdint>
#include <string>

#include "output/record.h"

namespace swsh {

inline constexpr size_t kAddressBytes = 16;
using AddressBytes = std::array<uint8_t, kAddressBytes>;

// A number with its mask, or an address with its mask in its first bytes.
struct MatchValue {
  uint32_t number = 0;
  uint32_t mask = 0;
  AddressBytes address = {};
  AddressBytes address_mask = {};
};

// How a value is written: VALUE or VALUE/MASK.
enum class Notation { decimal, hexadecimal, mac, ip, ip6 };

// `bits` is the width of a number. Throws std::invalid_argument, whose what()
// says what the word is instead: "out of range".
MatchValue parse_match(Notation notation, int bits, const std::string &word);

// The same the other way round; a full mask is left out.
std::string match_text(Notation notation, int bits, const MatchValue &value);

// What a record holds of it: a number with its mask, or an address as text.
Value match_field(Notation notation, int bits, const MatchValue &value);

// What parse_match() takes, for a message.
std::string match_expected(Notation notation, int bits);

}  // namespace swsh

#endif
