// SPDX-License-Identifier: MIT
// Source addresses: what is learned, moved, refreshed and refused.
#include <swctl/platform/sdk.h>

#include "switch.h"

namespace {

using frames::Bytes;
using frames::kBroadcast;
using frames::kSecond;
using frames::Maker;
using frames::mask;
using frames::plain;
using frames::station;

class Learning : public frames::Switch {
 protected:
  static constexpr uint32_t kForwardIt = 0;
  static constexpr uint32_t kDropIt = 1;
  static constexpr uint32_t kToCpu = 2;
  static constexpr uint32_t kCopyIt = 3;
  static constexpr uint32_t kViolation = 1;

  void SetUp() override {
    Switch::SetUp();
    set_vlan(1, mask({1, 2, 3}), mask({1, 2, 3}));
  }
  static Bytes from(uint32_t number) { return plain(kBroadcast, station(number)); }
  static Bytes from_nobody() { return plain(kBroadcast, 0); }
  static void act(int32_t port, uint32_t mode, uint32_t action) {
    ASSERT_EQ(rtk_l2_newMacOp_set(0, port, mode, action), 0);
  }
  static void limit(int32_t port, int32_t limit) {
    ASSERT_EQ(rtk_l2_portLimitLearningCnt_set(0, port, limit), 0);
    ASSERT_EQ(rtk_l2_portLimitLearningCntEnable_set(0, port, 1), 0);
  }
};

TEST_F(Learning, IsOfSourcesByVlanAndPort) {
  EXPECT_EQ(out(1, from(1)), mask({2, 3}));
  EXPECT_EQ(entry_of(station(1)).port, 1);
  EXPECT_FALSE(is_known(station(1), 2));
  EXPECT_EQ(out(2, plain(station(1), station(2))), mask({1}));
  EXPECT_EQ(out(3, plain(station(1), station(3))), mask({1}));
  EXPECT_EQ(out(3, from(1)), mask({1, 2})) << "it has moved";
  EXPECT_EQ(entry_of(station(1)).port, 3);
}

TEST_F(Learning, GroupsAreForwardedAndNotLearned) {
  act(1, 0, kDropIt);
  EXPECT_EQ(out(1, plain(kBroadcast, 0x010000000001)), mask({2, 3}))
      << "nor are they new addresses";
  EXPECT_FALSE(is_known(0x010000000001));
}

TEST_F(Learning, OfTheZeroAddressIsASetting) {
  ASSERT_EQ(rtk_l2_zeroSALearningEnable_set(0, 0), 0);
  act(1, 0, kDropIt);
  EXPECT_EQ(out(1, from_nobody()), mask({2, 3})) << "it could not be learned";
  EXPECT_FALSE(is_known(0));
  ASSERT_EQ(rtk_l2_zeroSALearningEnable_set(0, 1), 0);
  EXPECT_EQ(out(1, from_nobody()), 0u);
  EXPECT_TRUE(is_known(0));
}

TEST_F(Learning, StopsAtTheLimitOfThePort) {
  limit(1, 2);
  for (const uint32_t number : {1u, 2u, 3u}) EXPECT_EQ(out(1, from(number)), mask({2, 3}));
  EXPECT_TRUE(is_known(station(2)));
  EXPECT_FALSE(is_known(station(3)));
  arrive(2, from(9));
  EXPECT_EQ(out(1, from(9)), mask({2, 3}));
  EXPECT_EQ(entry_of(station(9)).port, 2) << "nor does an entry move to it";
  advance(200 * kSecond);
  arrive(1, from(1));
  advance(200 * kSecond);
  EXPECT_TRUE(is_known(station(1))) << "what is there is refreshed";
  EXPECT_FALSE(is_known(station(2)));
}

TEST_F(Learning, StopsAtAFullBucket) {
  // These addresses differ in nothing that a bucket is chosen by.
  const auto in_bucket = [](uint32_t number) {
    const uint64_t twice = uint64_t{number} << 12 | number;
    return station(0) ^ twice;
  };
  for (uint32_t number = 1; number <= 4; ++number) arrive(1, plain(kBroadcast, in_bucket(number)));
  ASSERT_TRUE(is_known(in_bucket(4)));
  EXPECT_EQ(out(1, plain(kBroadcast, in_bucket(5))), mask({2, 3}));
  EXPECT_FALSE(is_known(in_bucket(5)));
  EXPECT_EQ(out(2, plain(kBroadcast, in_bucket(3))), mask({1, 3}));
  EXPECT_EQ(entry_of(in_bucket(3)).port, 2) << "what has a place may move";
}

TEST_F(Learning, OfModes1And2IsNone) {
  for (const uint32_t mode : {1u, 2u}) {
    act(1, 0, kForwardIt);
    arrive(1, from(1));
    arrive(2, from(2));
    act(1, mode, kForwardIt);
    advance(200 * kSecond);
    EXPECT_EQ(out(1, from(1)), mask({2, 3}));
    EXPECT_EQ(out(1, from(2)), mask({2, 3}));
    EXPECT_EQ(out(1, from(3)), mask({2, 3}));
    EXPECT_EQ(entry_of(station(2)).port, 2) << "not moved";
    EXPECT_FALSE(is_known(station(3))) << "not learned";
    advance(100 * kSecond);
    EXPECT_FALSE(is_known(station(1))) << "not refreshed";
  }
}

TEST_F(Learning, ANewAddressWithEachAction) {
  for (const uint32_t mode : {0u, 1u, 2u}) {
    const uint32_t first = 10 * mode;
    act(1, mode, kForwardIt);
    EXPECT_EQ(out(1, from(first + 1)), mask({2, 3}));
    act(1, mode, kDropIt);
    EXPECT_EQ(out(1, from(first + 2)), 0u);
    EXPECT_EQ(drops(1).learn, mode + 1);
    act(1, mode, kToCpu);
    arrive(1, from(first + 3));
    EXPECT_EQ(only(kCpu).reason, uint32_t{VCHIP_TO_CPU_NEW_ADDRESS});
    EXPECT_EQ(left(), 0u);
    act(1, mode, kCopyIt);
    EXPECT_EQ(out(1, from(first + 4)), mask({2, 3, kCpu}));
    for (uint32_t number = 1; number <= 4; ++number)
      EXPECT_EQ(is_known(station(first + number)), mode == 0);
    if (mode == 0) {
      EXPECT_EQ(out(1, from(2)), mask({2, 3})) << "new no more";
    }
  }
}

TEST_F(Learning, AnAddressThatFindsNoRoomIsNewToo) {
  limit(1, 0);
  act(1, 0, kToCpu);
  for (int each = 0; each < 2; ++each) EXPECT_EQ(out(1, from(1)), mask({kCpu}));
  EXPECT_FALSE(is_known(station(1)));
}

TEST_F(Learning, AnAddressOnAnotherPortIsNotNew) {
  arrive(2, from(1));
  act(1, 1, kDropIt);
  EXPECT_EQ(out(1, from(1)), mask({2, 3}));
  bind(station(5), 3);
  EXPECT_EQ(out(1, from(5)), mask({2, 3}));
}

TEST_F(Learning, AStaticEntryElsewhereIsAViolation) {
  bind(station(1), 3);
  EXPECT_EQ(out(1, from(1)), mask({2, 3})) << "forwarded";
  EXPECT_EQ(entry_of(station(1)).port, 3);
  EXPECT_EQ(entry_of(station(1)).state & kViolation, kViolation);
  bind(station(2), 3, 8 | 0x20);
  EXPECT_EQ(out(1, from(2)), mask({2, 3}));
  EXPECT_EQ(entry_of(station(2)).state & kViolation, 0u);
  bind(station(4), 1);
  EXPECT_EQ(out(1, from(4)), mask({2, 3}));
  EXPECT_EQ(entry_of(station(4)).state & kViolation, 0u) << "where it is bound to be";
}

TEST_F(Learning, AViolationIsOneInEveryMode) {
  for (const uint32_t mode : {1u, 2u}) {
    act(1, mode, kForwardIt);
    bind(station(mode), 3);
    EXPECT_EQ(out(1, from(mode)), mask({2, 3}));
    EXPECT_EQ(entry_of(station(mode)).state & kViolation, kViolation);
  }
}

TEST_F(Learning, AFilteredSourceIsDroppedBeforeEverythingElse) {
  bind(station(1), 1, 2);
  EXPECT_EQ(out(1, from(1)), 0u);
  EXPECT_EQ(drops(1).learn, 1u);
  EXPECT_EQ(out(2, from(1)), 0u);
  EXPECT_EQ(entry_of(station(1)).port, 1) << "it does not move";
  bind(station(2), 1, 2 | 8);
  EXPECT_EQ(out(2, from(2)), 0u);
  EXPECT_EQ(entry_of(station(2)).state & kViolation, 0u) << "nor is it a violation";
  advance(299 * kSecond);
  EXPECT_EQ(out(1, from(1)), 0u);
  advance(2 * kSecond);
  EXPECT_FALSE(is_known(station(1))) << "nor does it stay young";
}

TEST_F(Learning, FollowsTheStateOfThePort) {
  for (const uint32_t state : {0u, 1u}) {
    ASSERT_EQ(rtk_stp_mstpState_set(0, 0, 1, state), 0);
    EXPECT_EQ(out(1, from(1)), 0u);
    EXPECT_FALSE(is_known(station(1)));
  }
  ASSERT_EQ(rtk_stp_mstpState_set(0, 0, 1, 2), 0);
  EXPECT_EQ(out(1, from(1)), 0u);
  EXPECT_TRUE(is_known(station(1)));
  EXPECT_EQ(drops(1).state, 3u);
}

TEST_F(Learning, OfTheInstanceOfTheVlan) {
  make_vlan(20, mask({1, 2}));
  ASSERT_EQ(rtk_stp_mstpInstance_create(0, 3), 0);
  ASSERT_EQ(rtk_vlan_stg_set(0, 20, 3), 0);
  ASSERT_EQ(rtk_stp_mstpState_set(0, 3, 1, 3), 0);
  const Bytes tagged = Maker(kBroadcast, station(1)).tag(20).type(0x88b5).bytes();
  EXPECT_EQ(out(1, tagged), 0u) << "port 2 is disabled in the instance";
  EXPECT_EQ(drops(1).egress, 1u);
  for (const uint32_t state : {1u, 2u}) {
    ASSERT_EQ(rtk_stp_mstpState_set(0, 3, 2, state), 0);
    EXPECT_EQ(out(1, tagged), 0u);
  }
  ASSERT_EQ(rtk_stp_mstpState_set(0, 3, 2, 3), 0);
  EXPECT_EQ(out(1, tagged), mask({2}));
  EXPECT_EQ(out(2, from(2)), mask({1, 3})) << "VLAN 1 is in another";
}

TEST_F(Learning, OfTheProcessorIsAsAny) {
  set_vlan(1, mask({1, 2, 3, kCpu}), mask({1, 2, 3, kCpu}));
  act(kCpu, 0, kDropIt);
  EXPECT_EQ(out(kCpu, from(9)), mask({1, 2, 3})) << "no action for new addresses";
  EXPECT_EQ(entry_of(station(9)).port, kCpu);
  ASSERT_EQ(rtk_stp_mstpState_set(0, 0, kCpu, 1), 0);
  EXPECT_EQ(out(kCpu, from(9)), mask({1, 2, 3})) << "it forwards in every instance";
  EXPECT_EQ(out(1, from(1)), mask({2, 3, kCpu}));
}

TEST_F(Learning, AgesExactly) {
  ASSERT_EQ(rtk_l2_aging_set(0, 10), 0);
  arrive(1, from(1));
  advance(10 * kSecond - 1);
  EXPECT_TRUE(is_known(station(1)));
  EXPECT_EQ(out(2, plain(station(1), station(2))), mask({1}))
      << "a destination does not stay young";
  advance(1);
  EXPECT_FALSE(is_known(station(1)));
  EXPECT_EQ(out(2, plain(station(1), station(2))), mask({1, 3}));
}

TEST_F(Learning, WithoutAgingAnAddressStays) {
  ASSERT_EQ(rtk_l2_aging_set(0, 0), 0);
  arrive(1, from(1));
  advance(10000000 * kSecond);
  EXPECT_TRUE(is_known(station(1)));
  ASSERT_EQ(rtk_l2_aging_set(0, 10), 0);
  advance(1);
  EXPECT_FALSE(is_known(station(1))) << "it is older than that";
}

TEST_F(Learning, AgesByTheClockAndWithoutItAddUp) {
  ASSERT_EQ(rtk_l2_aging_set(0, 10), 0);
  arrive(1, from(1));
  advance(4 * kSecond);
  ASSERT_EQ(vchip_time_pass(0, 5), 0);
  EXPECT_TRUE(is_known(station(1)));
  advance(kSecond);
  EXPECT_FALSE(is_known(station(1)));
  EXPECT_EQ(vchip_clock(), 5 * kSecond);
}

TEST_F(Learning, StaysWhenALinkGoesDown) {
  arrive(1, from(1));
  ASSERT_EQ(vchip_cable_pull(0, 1), 0);
  EXPECT_TRUE(is_known(station(1)));
  EXPECT_EQ(out(2, plain(station(1), station(2))), 0u);
  EXPECT_EQ(drops(2).egress, 1u);
}

TEST_F(Learning, AgreesWithWhatTheChipIsTold) {
  const vchip_station_t first = {1, {2, 0, 0, 0, 0, 1}, 0};
  ASSERT_EQ(vchip_station_learn(0, 1, &first), 0);
  arrive(1, from(2));
  const vchip::AddressView told = entry_of(station(1));
  vchip::AddressView seen = entry_of(station(2));
  seen.index = told.index;
  seen.mac = told.mac;
  EXPECT_EQ(seen, told);
}

}  // namespace
