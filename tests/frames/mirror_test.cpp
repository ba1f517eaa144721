// SPDX-License-Identifier: MIT
// Copies of what ports receive and send.
#include <swctl-vchip/queue_view.h>

#include "rule_maker.h"

namespace {

using frames::Bytes;
using frames::kBroadcast;
using frames::kSecond;
using frames::Left;
using frames::Maker;
using frames::mask;
using frames::plain;
using frames::station;

// Port 9 takes copies, and is in no VLAN.
class Mirror : public frames::Switch {
 protected:
  static constexpr int32_t kAnalyser = 9;

  void SetUp() override {
    Switch::SetUp();
    set_vlan(1, mask({1, 2}), mask({1, 2}));
  }
  static void mirror(uint32_t group, uint32_t in, uint32_t out, int32_t to = kAnalyser) {
    chip_mirror_entry entry = {};
    entry.enable = 1;
    entry.mirroring_port = static_cast<uint32_t>(to);
    entry.ingress = in;
    entry.egress = out;
    ASSERT_EQ(rtk_mirror_group_set(0, group, &entry), 0);
  }
  static Bytes untagged() { return plain(kBroadcast, station(1)); }
  static Bytes tagged() { return Maker(kBroadcast, station(1)).tag(1, 5).type(0x88b5).bytes(); }
};

TEST_F(Mirror, InIsTheFrameAsReceived) {
  mirror(0, mask({1}), 0);
  EXPECT_EQ(through(1, tagged(), kAnalyser), tagged());
  EXPECT_EQ(through(1, untagged(), kAnalyser), untagged());
  EXPECT_EQ(out(2, untagged()), mask({1})) << "another port";
}

TEST_F(Mirror, OutIsTheFrameAsSent) {
  mirror(0, 0, mask({2}));
  Bytes sent = plain(kBroadcast, station(1));
  EXPECT_EQ(through(1, tagged(), kAnalyser), sent) << "untagged and padded";
  EXPECT_EQ(out(2, untagged()), mask({1}));
}

TEST_F(Mirror, InAndOutGiveTwoCopiesInThatOrder) {
  mirror(0, mask({1}), mask({2}));
  arrive(1, tagged());
  const std::vector<Left> copies = taken(kAnalyser);
  ASSERT_EQ(copies.size(), 2u);
  EXPECT_EQ(copies[0].bytes, tagged());
  EXPECT_EQ(copies[1].bytes, untagged());
}

TEST_F(Mirror, CopiesWhatIsDroppedLater) {
  mirror(0, mask({1}), 0);
  ASSERT_EQ(rtk_rate_igrBandwidthCtrlRate_set(0, 1, 0), 0);
  const Bytes nowhere = Maker(kBroadcast, station(1)).tag(99).type(0x88b5).bytes();
  EXPECT_EQ(out(1, nowhere), mask({kAnalyser}));
  const Bytes pause = Maker(0x0180c2000001, station(1)).type(0x8808).half(1).half(0).bytes();
  EXPECT_EQ(out(1, pause), mask({kAnalyser}));
  ASSERT_EQ(rtk_port_adminEnable_set(0, 1, 0), 0);
  EXPECT_EQ(out(1, untagged()), 0u) << "what was never received";
}

TEST_F(Mirror, TheAnalyserTakesThemWhateverItsState) {
  mirror(0, mask({1}), 0);
  ASSERT_EQ(rtk_port_isolation_set(0, 1, 0), 0);
  ASSERT_EQ(rtk_stp_mstpState_set(0, 0, kAnalyser, 0), 0);
  EXPECT_EQ(out(1, untagged()), mask({kAnalyser}));
  ASSERT_EQ(vchip_cable_pull(0, kAnalyser), 0);
  EXPECT_EQ(out(1, untagged()), 0u);
}

TEST_F(Mirror, TheAnalyserSwitchesAsAnyPort) {
  set_vlan(1, mask({1, 2, kAnalyser}), mask({1, 2, kAnalyser}));
  mirror(0, mask({1}), 0);
  arrive(1, untagged());
  EXPECT_EQ(count(kAnalyser), 2u) << "the copy, and the frame as a member";
  left();
  EXPECT_EQ(out(kAnalyser, untagged()), mask({1, 2}));
}

TEST_F(Mirror, CopiesGoThroughQueue0AndTheLimit) {
  mirror(0, mask({1}), 0);
  ASSERT_EQ(rtk_rate_egrBandwidthCtrlRate_set(0, kAnalyser, 1), 0);
  ASSERT_EQ(rtk_rate_egrBandwidthCtrlEnable_set(0, kAnalyser, 1), 0);
  for (int each = 0; each < 20; ++each) arrive(1, plain(kBroadcast, station(1), 1020));
  EXPECT_EQ(count(kAnalyser), 16u);
  EXPECT_EQ(vchip::port_queues(0, kAnalyser).queues[0].waiting, 4u);
  advance(10 * kSecond);
  EXPECT_EQ(count(kAnalyser), 4u);
}

TEST_F(Mirror, CopiesAreNotMirroredAgain) {
  mirror(0, mask({1}), 0);
  mirror(1, 0, mask({kAnalyser}), 10);
  EXPECT_EQ(out(1, untagged()), mask({2, kAnalyser}));
  set_vlan(1, mask({1, 2, kAnalyser}), mask({1, 2, kAnalyser}));
  arrive(1, untagged());
  EXPECT_EQ(count(kAnalyser), 2u);
  EXPECT_EQ(count(10), 1u) << "the frame, and not the copy";
}

TEST_F(Mirror, GroupsAddUp) {
  mirror(0, mask({1}), 0, 9);
  mirror(3, mask({1}), 0, 10);
  EXPECT_EQ(out(1, untagged()), mask({2, 9, 10}));
}

TEST_F(Mirror, ADisabledGroupCopiesNothing) {
  chip_mirror_entry entry = {};
  entry.mirroring_port = kAnalyser;
  entry.ingress = mask({1});
  entry.egress = mask({2});
  ASSERT_EQ(rtk_mirror_group_set(0, 0, &entry), 0);
  EXPECT_EQ(out(1, untagged()), mask({2}));
  mirror(1, mask({1}), mask({2}), 10);
  arrive(1, untagged());
  EXPECT_EQ(count(10), 2u);
  EXPECT_EQ(left(), mask({2})) << "nor does one beside it";
}

TEST_F(Mirror, TheMasksDecideAboutTheProcessor) {
  set_vlan(1, mask({1, 2, kCpu}), mask({1, 2, kCpu}));
  chip_mirror_entry entry = {};
  entry.enable = 1;
  entry.mirroring_port = kAnalyser;
  entry.field12 = 1;
  entry.field7 = 1;
  ASSERT_EQ(rtk_mirror_group_set(0, 0, &entry), 0);
  EXPECT_EQ(out(kCpu, untagged()), mask({1, 2})) << "the CPU flag has no effect";
  mirror(0, mask({kCpu}), mask({kCpu}));
  EXPECT_EQ(out(kCpu, untagged()), mask({1, 2, kAnalyser}));
  EXPECT_EQ(out(1, untagged()), mask({2, kCpu, kAnalyser}));
}

TEST_F(Mirror, ToTheProcessorHasNoReason) {
  mirror(0, mask({1}), 0, kCpu);
  arrive(1, tagged());
  const Left copy = only(kCpu);
  EXPECT_EQ(copy.reason, 0u);
  EXPECT_EQ(copy.port_in, 1);
  EXPECT_EQ(copy.bytes, tagged());
}

TEST_F(Mirror, WhatIsTrappedIsSentByTheProcessorsPort) {
  ASSERT_EQ(rtk_trap_portMgmtFrameAction_set(0, 1, 19, 2), 0);
  mirror(0, 0, mask({kCpu}));
  const Bytes bpdu = Maker(0x0180c2000000, station(1)).half(38).bytes();
  EXPECT_EQ(out(1, bpdu), mask({kCpu, kAnalyser}));
}

TEST_F(Mirror, WhatIsTransmittedIsMirroredOut) {
  mirror(0, 0, mask({2}));
  const Bytes frame = untagged();
  ASSERT_EQ(vchip_frame_transmit(0, 2, frame.data(), 60), 0);
  EXPECT_EQ(left(), mask({2, kAnalyser}));
}

// A port in MAC loopback.
class Loop : public Mirror {
 protected:
  void SetUp() override {
    Mirror::SetUp();
    ASSERT_EQ(rtk_diag_portMacLocalLoopbackEnable_set(0, 2, 1), 0);
  }
  static uint32_t counter(int32_t port, uint32_t which) {
    user_counter_t value = {};
    EXPECT_EQ(rtk_stat_port_get(0, port, which, &value), 0);
    return value.low;
  }
};

TEST_F(Loop, TurnsWhatThePortWouldSend) {
  set_vlan(1, mask({1, 2, 3}), mask({1, 2, 3}));
  arrive(1, untagged());
  EXPECT_EQ(count(1), 1u) << "it came in by port 2";
  const std::vector<Left> third = taken(3);
  ASSERT_EQ(third.size(), 2u);
  EXPECT_EQ(third[0].port_in, 1) << "everything else has left before";
  EXPECT_EQ(third[1].port_in, 2);
  EXPECT_EQ(count(2), 0u);
  EXPECT_EQ(drops(2).received, 1u);
  EXPECT_EQ(counter(2, CHIP_COUNTER_TX_BROADCAST), 1u);
  EXPECT_EQ(counter(2, CHIP_COUNTER_RX_BROADCAST), 1u);
  EXPECT_EQ(entry_of(station(1)).port, 2);
}

TEST_F(Loop, ThePortHearsNothingOfItsCable) {
  EXPECT_EQ(out(2, untagged()), 0u);
  EXPECT_EQ(drops(2).port, 1u);
}

TEST_F(Loop, AFrameTurnsOnce) {
  set_vlan(1, mask({1, 2, 3}), mask({1, 2, 3}));
  ASSERT_EQ(rtk_diag_portMacLocalLoopbackEnable_set(0, 3, 1), 0);
  arrive(1, untagged());
  EXPECT_EQ(count(1), 2u) << "once from each loop";
  EXPECT_EQ(drops(2).loop, 1u);
  EXPECT_EQ(drops(3).loop, 1u);
  EXPECT_EQ(counter(3, CHIP_COUNTER_TX_BROADCAST), 1u) << "what is lost is not sent";
  EXPECT_EQ(drops(3).received, 1u) << "nor received";
}

TEST_F(Loop, IsMirroredAsSentAndAsReceived) {
  mirror(0, mask({2}), mask({2}));
  arrive(1, untagged());
  EXPECT_EQ(count(kAnalyser), 2u);
}

TEST_F(Loop, TurnsWhatTheProcessorTransmits) {
  const Bytes frame = untagged();
  ASSERT_EQ(vchip_frame_transmit(0, 2, frame.data(), 60), 0);
  EXPECT_EQ(left(), mask({1}));
}

TEST_F(Loop, ThatIsDisabledTurnsNothing) {
  ASSERT_EQ(rtk_port_adminEnable_set(0, 2, 0), 0);
  EXPECT_EQ(out(1, untagged()), 0u);
}

}  // namespace
