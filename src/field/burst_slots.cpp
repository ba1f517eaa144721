// SPDX-License-Identifier: MIT
#include "field/burst_slots.h"

namespace swctl {
namespace {

constexpr int32_t kNone = -1;
constexpr BurstChange kRefused = {-1, kNone, kNone};

bool is_slot(int16_t number) {
  return number >= 0 && number < CHIP_ACL_BURST_SLOTS;
}

}  // namespace

void BurstSlots::drop_user(int32_t slot) {
  if (--slots_[slot].users <= 0) slots_[slot].burst = 0;
}

int32_t BurstSlots::first_free() const {
  for (int32_t slot = 0; slot < CHIP_ACL_BURST_SLOTS; ++slot) {
    if (slots_[slot].burst == 0) return slot;
  }
  return kNone;
}

int32_t BurstSlots::last_with(int32_t burst) const {
  for (int32_t slot = CHIP_ACL_BURST_SLOTS - 1; slot >= 0; --slot) {
    if (slots_[slot].burst == burst) return slot;
  }
  return kNone;
}

BurstChange BurstSlots::release(int16_t current) {
  if (!is_slot(current)) return {0, kNone, kNone};
  drop_user(current);
  return {0, kNone, slots_[current].burst == 0 ? current : kNone};
}

BurstChange BurstSlots::take(int32_t burst, int16_t current) {
  if (current == kNone) return place(burst, kNone);
  if (!is_slot(current)) return kRefused;
  if (slots_[current].burst == burst) return {current, kNone, kNone};
  drop_user(current);
  return place(burst, current);
}

// `left` is the slot that the meter has just given up, if it had one.
BurstChange BurstSlots::place(int32_t burst, int32_t left) {
  const int32_t match = last_with(burst);
  const int32_t free = first_free();
  if (match == kNone && free == kNone) {
    if (left != kNone) ++slots_[left].users;
    return kRefused;
  }
  const int32_t taken = match != kNone ? match : free;
  ++slots_[taken].users;
  slots_[taken].burst = burst;
  const bool freed = left != kNone && slots_[left].burst == 0;
  return {taken, match == kNone ? taken : kNone, freed ? left : kNone};
}

}  // namespace swctl
