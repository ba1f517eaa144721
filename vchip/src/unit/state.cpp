// SPDX-License-Identifier: MIT
#include "unit/state.h"

#include <algorithm>

namespace vchip {
namespace {

// The units have one clock. A call that was killed while it advanced them may
// have left one.
void repair_clocks(State &state) {
  uint64_t clock = 0;
  for (const Unit &unit : state.units) clock = std::max(clock, unit.time.clock());
  for (Unit &unit : state.units) {
    unit.l2.pass(clock - unit.time.clock());
    unit.time.set_clock(clock);
  }
}

template <typename Block>
bool is_sound(const Block &block) {
  if constexpr (requires { block.sound(); }) return block.sound();
  return true;
}

}  // namespace

void power_on(State &zeroes) {
  zeroes.platform.power_on();
  zeroes.rules.power_on();
  for (Unit &unit : zeroes.units)
    each_block(unit, [](const char *, auto &block) { block.power_on(); });
}

void repair_state(State &state) {
  state.platform.repair();
  state.rules.repair();
  for (Unit &unit : state.units)
    each_block(unit, [](const char *, auto &block) { block.repair(); });
  repair_clocks(state);
}

bool is_sound(const State &state) {
  bool sound = is_sound(state.platform) && is_sound(state.rules);
  for (const Unit &unit : state.units)
    each_block(unit, [&](const char *, const auto &block) { sound = sound && is_sound(block); });
  return sound;
}

}  // namespace vchip
