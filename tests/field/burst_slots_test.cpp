// SPDX-License-Identifier: MIT
#include "field/burst_slots.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using swctl::BurstChange;
using swctl::BurstSlots;

// What a book does, told step by step in words that the library does not
// share: the slots as two plain lists, each rule written out where it applies.
class Reference {
 public:
  BurstChange change(int burst, int current) {
    BurstChange answer = {0, -1, -1};
    const bool has_slot = current == 0 || current == 1;
    if (burst == 0) {
      if (!has_slot) return answer;
      users_[current] = users_[current] - 1;
      if (users_[current] <= 0) bursts_[current] = 0;
      if (bursts_[current] == 0) answer.freed = current;
      return answer;
    }
    bool lowered = false;
    if (current != -1) {
      if (!has_slot) return {-1, -1, -1};
      if (bursts_[current] == burst) return {current, -1, -1};
      users_[current] = users_[current] - 1;
      lowered = true;
      if (users_[current] <= 0) bursts_[current] = 0;
    }
    int free = -1;
    int match = -1;
    for (int slot = 0; slot < 2; ++slot) {
      if (free == -1 && bursts_[slot] == 0) free = slot;
      if (bursts_[slot] == burst) match = slot;
    }
    if (match == -1 && free == -1) {
      if (lowered) users_[current] = users_[current] + 1;
      return {-1, -1, -1};
    }
    if (match != -1) {
      users_[match] = users_[match] + 1;
      answer.result = match;
    } else {
      users_[free] = users_[free] + 1;
      bursts_[free] = burst;
      answer.result = free;
      answer.programmed = free;
    }
    if (has_slot && bursts_[current] == 0) answer.freed = current;
    return answer;
  }

 private:
  int users_[2] = {};
  int bursts_[2] = {};
};

void expect_same(const BurstChange &found, const BurstChange &expected) {
  EXPECT_EQ(found.result, expected.result);
  EXPECT_EQ(found.programmed, expected.programmed);
  EXPECT_EQ(found.freed, expected.freed);
}

TEST(BurstSlots, FirstBurstTakesSlotZero) {
  BurstSlots slots = {};
  expect_same(slots.take(4096, -1), {0, 0, -1});
  expect_same(slots.take(4096, -1), {0, -1, -1});
  expect_same(slots.take(8192, -1), {1, 1, -1});
  expect_same(slots.take(2048, -1), {-1, -1, -1});
}

TEST(BurstSlots, LastUserFreesTheSlot) {
  BurstSlots slots = {};
  slots.take(4096, -1);
  slots.take(4096, -1);
  expect_same(slots.release(0), {0, -1, -1});
  expect_same(slots.release(0), {0, -1, 0});
  expect_same(slots.take(2048, -1), {0, 0, -1});
}

TEST(BurstSlots, ARefusedMoveKeepsTheUser) {
  BurstSlots slots = {};
  slots.take(4096, -1);
  slots.take(8192, -1);
  slots.take(8192, -1);
  expect_same(slots.take(2048, 1), {-1, -1, -1});
  expect_same(slots.release(1), {0, -1, -1});
  expect_same(slots.release(1), {0, -1, 1});
}

TEST(BurstSlots, CountsGoBelowZero) {
  BurstSlots slots = {};
  expect_same(slots.release(0), {0, -1, 0});
  expect_same(slots.release(0), {0, -1, 0});
  expect_same(slots.take(4096, -1), {0, 0, -1});
  slots.take(4096, -1);
  slots.take(4096, -1);
  // Three took it and one is counted: the first who leaves frees it.
  expect_same(slots.release(0), {0, -1, 0});
}

TEST(BurstSlots, NumbersThatAreNoSlot) {
  BurstSlots slots = {};
  for (int16_t current : std::initializer_list<int16_t>{2, -2, 255, 32767, -32768}) {
    expect_same(slots.release(current), {0, -1, -1});
    expect_same(slots.take(4096, current), {-1, -1, -1});
  }
  expect_same(slots.release(-1), {0, -1, -1});
  expect_same(slots.take(4096, -1), {0, 0, -1});
}

TEST(BurstSlots, AgreeWithTheReferenceOnRandomWalks) {
  std::mt19937 random(20261120);
  const int kBursts[] = {0, 0, 128, 4096, 4096, 8192, -5};
  const int kCurrents[] = {-1, -1, -1, 0, 0, 1, 1, 2, -7};
  for (int walk = 0; walk < 200; ++walk) {
    BurstSlots slots = {};
    Reference reference;
    for (int step = 0; step < 100; ++step) {
      const int burst = kBursts[random() % std::size(kBursts)];
      const int current = kCurrents[random() % std::size(kCurrents)];
      const auto slot = static_cast<int16_t>(current);
      const BurstChange found = burst == 0 ? slots.release(slot) : slots.take(burst, slot);
      SCOPED_TRACE("walk " + std::to_string(walk) + " step " + std::to_string(step));
      expect_same(found, reference.change(burst, current));
      if (testing::Test::HasFailure()) return;
    }
  }
}

}  // namespace
