// SPDX-License-Identifier: MIT
// All that the chip holds, as one block of memory without pointers.
#ifndef VCHIP_UNIT_STATE_H
#define VCHIP_UNIT_STATE_H

#include <swctl-vchip/vchip.h>

#include <type_traits>

#include "image/header.h"
#include "platform/platform_block.h"
#include "rules/rule_block.h"
#include "unit/blocks.h"

namespace vchip {

// Each block begins with a cache line, so that an entry of 64 bytes is in one
// and not in two.
inline constexpr size_t kCacheLine = 64;

struct Unit {
#define VCHIP_MEMBER(type, name) alignas(kCacheLine) type name;
  VCHIP_BLOCKS(VCHIP_MEMBER)
#undef VCHIP_MEMBER
};

// Calls visit(name, block) for every block of a unit.
template <typename AnyUnit, typename Visit>
void each_block(AnyUnit &unit, Visit visit) {
#define VCHIP_VISIT(type, name) visit(#name, unit.name);
  VCHIP_BLOCKS(VCHIP_VISIT)
#undef VCHIP_VISIT
}

// The header has a page of its own: what follows is the chip, and a program may
// keep a copy of it and put it back (memory.h), but not of who is writing.
struct State {
  Header header;
  PlatformBlock platform;
  RuleBlock rules;
  Unit units[VCHIP_UNITS];
};
static_assert(std::is_trivially_copyable_v<State> && std::is_standard_layout_v<State>);

// Two builds with the same fingerprint understand each other's images.
constexpr uint32_t state_layout() {
  uint32_t hash = hash_word(kHashStart, VCHIP_UNITS);
  hash = hash_word(hash, sizeof(PlatformBlock));
  hash = hash_word(hash, PlatformBlock::kLayout);
  hash = hash_word(hash, sizeof(RuleBlock));
  hash = hash_word(hash, RuleBlock::kLayout);
#define VCHIP_HASH(type, name)          \
  hash = hash_text(hash, #name);        \
  hash = hash_word(hash, sizeof(type)); \
  hash = hash_word(hash, type::kLayout);
  VCHIP_BLOCKS(VCHIP_HASH)
#undef VCHIP_HASH
  return hash;
}

// The state after power-on, of everything but the header, from zeroes.
void power_on(State &zeroes);

// Makes whole what a killed call may have left half done.
void repair_state(State &state);

// Whether every block is sound, as unit/blocks.h says.
bool is_sound(const State &state);

}  // namespace vchip

#endif
