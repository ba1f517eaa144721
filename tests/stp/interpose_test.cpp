// SPDX-License-Identifier: MIT
// This program has its own rtk_l2_traverse, which the library reaches by its
// exported name, and its own SDK call, to see what holds while it runs.
#include <swctl/frame.h>
#include <swctl/platform/sdk.h>
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
uint32_t flag_during_call;

using StpInterpose = swctl_test::LibraryTest;

int32_t nothing(uint32_t, chip_l2_ucast_entry *, void *) {
  return 0;
}

}  // namespace

int32_t rtk_l2_traverse(uint32_t unit, user_l2_walk_callback_t callback, void *data) {
  seen = {seen.calls + 1, unit, callback, data};
  return answer;
}

int32_t rtk_stp_mstpState_set(uint32_t, uint32_t, int32_t, uint32_t) {
  flag_during_call = stateflag;
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

TEST_F(StpInterpose, TheStateIsRememberedBeforeTheCall) {
  answer = -1;
  for (const uint32_t state : {USER_STP_LEARNING, USER_STP_LISTENING}) {
    stateflag = 0;
    EXPECT_EQ(user_stg_stp_set(0, 0, 1, 5, state), -1);
    EXPECT_EQ(flag_during_call, state);
  }
  stateflag = 0;
}

}  // namespace
