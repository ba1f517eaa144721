// SPDX-License-Identifier: MIT
// This program has its own rtk_l2_traverse. The library reaches it by its
// exported name, so it is this one that is called.
#include <swctl/stp.h>

#include "support/library_test.h"

namespace {

struct Seen {
  int calls;
  uint32_t unit;
  user_l2_walk_callback_t callback;
  void *data;
};
Seen seen;
int32_t answer;

using StpInterpose = swctl_test::LibraryTest;

int32_t nothing(uint32_t, chip_l2_ucast_entry *, void *) {
  return 0;
}

}  // namespace

int32_t rtk_l2_traverse(uint32_t unit, user_l2_walk_callback_t callback, void *data) {
  seen = {seen.calls + 1, unit, callback, data};
  return answer;
}

namespace {

TEST_F(StpInterpose, VoiceWalkIsTheWalkOfUnitZero) {
  int data = 0;
  for (const int32_t result : {0, 4, -1, INT32_MIN}) {
    seen = {0, 99, nullptr, nullptr};
    answer = result;
    EXPECT_EQ(user_l2_voice_vlan_traverse(nothing, &data), result);
    EXPECT_EQ(seen.calls, 1);
    EXPECT_EQ(seen.unit, 0u);
    EXPECT_EQ(seen.callback, nothing);
    EXPECT_EQ(seen.data, &data);
    EXPECT_NO_CALLS();
  }
}

}  // namespace
