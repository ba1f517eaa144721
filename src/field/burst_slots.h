// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_FIELD_BURST_SLOTS_H
#define SWCTL_SRC_FIELD_BURST_SLOTS_H

#include <swctl/platform/field_records.h>

namespace swctl {

// What a change of the table answers, and which slots the chip is to be told
// about.
struct BurstChange {
  int32_t result;
  int32_t programmed;  // the slot that takes the burst size; -1 for none
  int32_t freed;       // the slot that goes back to its default; -1 for none
};

// Who uses which of the burst sizes that all meters share. The counts follow
// the callers: a slot that is released too often has a count below zero.
class BurstSlots {
 public:
  // `current` is the slot that the meter has; any number that is no slot's
  // means none.
  BurstChange release(int16_t current);
  // Here -1 means none, and other numbers that are no slot's are refused.
  BurstChange take(int32_t burst, int16_t current);

 private:
  struct Slot {
    int32_t burst;  // 0: free
    int32_t users;
  };

  void drop_user(int32_t slot);
  int32_t first_free() const;
  int32_t last_with(int32_t burst) const;
  BurstChange place(int32_t burst, int32_t left);

  Slot slots_[CHIP_ACL_BURST_SLOTS];
};

}  // namespace swctl

#endif
