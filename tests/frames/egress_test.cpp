// SPDX-License-Identifier: MIT
// Which ports a frame leaves by, and what the processor sends.
#include <swctl-vchip/queue_view.h>
#include <swctl/platform/sdk.h>

#include "switch.h"

namespace {

using frames::Bytes;
using frames::kBroadcast;
using frames::Left;
using frames::Maker;
using frames::mask;
using frames::plain;
using frames::station;

class Egress : public frames::Switch {
 protected:
  static constexpr uint32_t kAll = (uint32_t{1} << VCHIP_PORTS) - 1;
  static Bytes broadcast() { return plain(kBroadcast, station(1)); }
  static void transmit(int32_t port, const Bytes &frame) {
    ASSERT_EQ(vchip_frame_transmit(0, port, frame.data(), static_cast<uint32_t>(frame.size())), 0);
  }
};

TEST_F(Egress, FloodsAllMembersButWhereItCameFrom) {
  EXPECT_EQ(out(1, broadcast()), kAll & ~mask({1}));
  arrive(1, broadcast());
  const Left sent = only(kCpu);
  EXPECT_EQ(sent.reason, 0u) << "simply forwarded to the processor's port";
  EXPECT_EQ(sent.port_in, 1);
}

TEST_F(Egress, LeavesOutWhatIsIsolated) {
  ASSERT_EQ(rtk_port_isolation_set(0, 1, mask({2, 3, kCpu})), 0);
  EXPECT_EQ(out(1, broadcast()), mask({2, 3, kCpu}));
  EXPECT_EQ(out(2, broadcast()), kAll & ~mask({2})) << "one way";
  bind(station(9), 9);
  EXPECT_EQ(out(1, plain(station(9), station(1))), 0u);
  EXPECT_EQ(drops(1).egress, 1u);
  ASSERT_EQ(rtk_port_isolation_set(0, kCpu, mask({4})), 0);
  EXPECT_EQ(out(kCpu, broadcast()), mask({4}));
}

TEST_F(Egress, LeavesOutWhatDoesNotForward) {
  for (const uint32_t state : {0u, 1u, 2u}) {
    ASSERT_EQ(rtk_stp_mstpState_set(0, 0, 2, state), 0);
    EXPECT_EQ(out(1, broadcast()), kAll & ~mask({1, 2}));
  }
  ASSERT_EQ(rtk_stp_mstpState_set(0, 0, kCpu, 1), 0);
  EXPECT_EQ(out(1, broadcast()), kAll & ~mask({1, 2})) << "the processor's state does not count";
}

TEST_F(Egress, LeavesOutDisabledPortsAndThoseWithoutLink) {
  ASSERT_EQ(rtk_port_adminEnable_set(0, 2, 0), 0);
  ASSERT_EQ(vchip_cable_pull(0, 3), 0);
  ASSERT_EQ(rtk_port_adminEnable_set(0, kCpu, 0), 0);
  EXPECT_EQ(out(1, broadcast()), kAll & ~mask({1, 2, 3, kCpu}));
  for (const int32_t port : {2, 3, kCpu}) {
    EXPECT_EQ(out(port, broadcast()), 0u) << "nor do they hear anything";
    EXPECT_EQ(drops(port).port, 1u);
    EXPECT_EQ(drops(port).received, 0u);
  }
}

TEST_F(Egress, ThePortItCameByIsNoOther) {
  set_vlan(1, mask({1}), mask({1}));
  EXPECT_EQ(out(1, broadcast()), 0u);
  EXPECT_EQ(drops(1).egress, 1u);
  EXPECT_EQ(drops(1).forwarded, 0u);
  EXPECT_TRUE(is_known(station(1)));
}

TEST_F(Egress, WhatIsTransmittedPassesEveryLookup) {
  set_vlan(1, 0);
  ASSERT_EQ(rtk_port_isolation_set(0, kCpu, 0), 0);
  ASSERT_EQ(rtk_stp_mstpState_set(0, 0, 3, 1), 0);
  const Bytes frame = Maker(station(3), station(9)).tag(77, 5).type(0x88b5).bytes();
  transmit(3, frame);
  const Left sent = only(3);
  EXPECT_EQ(sent.bytes, frame);
  EXPECT_EQ(sent.port_in, kCpu);
  EXPECT_EQ(left(), 0u);
  EXPECT_FALSE(is_known(station(9), 77));
  EXPECT_EQ(drops(kCpu).received, 0u);
}

TEST_F(Egress, WhatIsTransmittedIsPaddedAndInQueue7) {
  transmit(3, Bytes(14, 0x42));
  Bytes padded(14, 0x42);
  padded.resize(60);
  EXPECT_EQ(only(3).bytes, padded);
  const vchip::PortQueueView queues = vchip::port_queues(0, 3);
  EXPECT_EQ(queues.queues[7].sent, 1u);
  EXPECT_EQ(queues.queues[7].bytes, 64u);
  user_counter_t octets = {};
  ASSERT_EQ(rtk_stat_port_get(0, 3, CHIP_COUNTER_TX_OCTETS, &octets), 0);
  EXPECT_EQ(octets.low, 64u);
}

TEST_F(Egress, WhatIsTransmittedNeedsLinkAndAdmin) {
  ASSERT_EQ(vchip_cable_pull(0, 3), 0);
  ASSERT_EQ(rtk_port_adminEnable_set(0, 4, 0), 0);
  for (const int32_t port : {3, 4}) {
    transmit(port, broadcast());
    EXPECT_EQ(drops(port).held, 1u);
  }
  EXPECT_EQ(left(), 0u);
}

TEST_F(Egress, WhatIsTooLongIsNotReceived) {
  ASSERT_EQ(rtk_switch_maxPktLenLinkSpeed_set(0, 1, 200), 0);
  EXPECT_NE(out(1, plain(kBroadcast, station(1), 196)), 0u);
  EXPECT_EQ(out(1, plain(kBroadcast, station(1), 197)), 0u);
  EXPECT_EQ(drops(1).length, 1u);
  EXPECT_EQ(drops(1).received, 1u);
  user_counter_t oversize = {};
  ASSERT_EQ(rtk_stat_port_get(0, 1, CHIP_COUNTER_OVERSIZE, &oversize), 0);
  EXPECT_EQ(oversize.low, 1u);
}

TEST_F(Egress, TheLongestFramePassesAndGetsATag) {
  ASSERT_EQ(rtk_switch_maxPktLenLinkSpeed_set(0, 1, 16383), 0);
  set_vlan(1, mask({1, 2, 3}), mask({1, 2}));
  const Bytes frame = plain(kBroadcast, station(1), VCHIP_FRAME_MAX);
  arrive(1, frame);
  EXPECT_EQ(only(2).bytes, frame);
  EXPECT_EQ(only(3).bytes.size(), frame.size() + 4);
}

TEST_F(Egress, LengthIsByTheClassOfTheSpeed) {
  ASSERT_EQ(rtk_switch_maxPktLenLinkSpeed_set(0, 0, 100), 0);
  ASSERT_EQ(rtk_switch_maxPktLenLinkSpeed_set(0, 1, 200), 0);
  const vchip_partner_t slow = {1, VCHIP_ABILITY_100_FULL};
  ASSERT_EQ(vchip_cable_plug(0, 2, &slow), 0);
  EXPECT_NE(out(1, plain(kBroadcast, station(1), 196)), 0u);
  EXPECT_EQ(out(2, plain(kBroadcast, station(2), 97)), 0u);
  EXPECT_NE(out(2, plain(kBroadcast, station(2), 96)), 0u);
  EXPECT_EQ(out(kCpu, plain(kBroadcast, station(9), 197)), 0u) << "the processor's is of 1 Gbit/s";
}

TEST_F(Egress, UpToTwoTagsOfAnyTableNeedNotCount) {
  ASSERT_EQ(rtk_switch_maxPktLenLinkSpeed_set(0, 1, 200), 0);
  ASSERT_EQ(rtk_vlan_innerTpidEntry_set(0, 3, 0x9100), 0);
  const auto frame = [](uint32_t tags, size_t length) {
    Maker maker(kBroadcast, station(1));
    constexpr uint32_t kTypes[] = {0x8100, 0x88a8, 0x8100};
    for (uint32_t tag = 0; tag < tags; ++tag) maker.tag(1, 0, kTypes[tag]);
    return maker.type(0x88b5).fill(length).bytes();
  };
  EXPECT_EQ(out(1, frame(1, 197)), 0u) << "tags count";
  ASSERT_EQ(rtk_switch_maxPktLenTagLenCntIncEnable_set(0, 0), 0);
  EXPECT_NE(out(1, frame(1, 200)), 0u);
  EXPECT_EQ(out(1, frame(1, 201)), 0u);
  EXPECT_NE(out(1, frame(2, 204)), 0u);
  EXPECT_EQ(out(1, frame(2, 205)), 0u);
  EXPECT_EQ(out(1, frame(3, 205)), 0u) << "the third counts";
  const Bytes other =
      Maker(kBroadcast, station(1)).tag(1, 0, 0x9100).type(0x88b5).fill(200).bytes();
  EXPECT_NE(out(1, other), 0u) << "whether the port knows the type or not";
}

TEST_F(Egress, ShortFramesArePaddedAndCountAs64Bytes) {
  const Bytes whole = plain(kBroadcast, station(1));
  arrive(1, Bytes(whole.begin(), whole.begin() + 14));
  Bytes padded(whole.begin(), whole.begin() + 14);
  padded.resize(60);
  EXPECT_EQ(only(2).bytes, padded);
  user_counter_t octets = {};
  ASSERT_EQ(rtk_stat_port_get(0, 1, CHIP_COUNTER_RX_OCTETS, &octets), 0);
  EXPECT_EQ(octets.low, 64u);
}

TEST_F(Egress, CountsByTheKindOfDestination) {
  bind(station(5), 5);
  arrive(1, plain(station(5), station(1)));
  for (int each = 0; each < 2; ++each) arrive(1, plain(0x010000000001, station(1)));
  for (int each = 0; each < 3; ++each) arrive(1, broadcast());
  const auto counter = [](int32_t port, uint32_t which) {
    user_counter_t value = {};
    EXPECT_EQ(rtk_stat_port_get(0, port, which, &value), 0);
    return value.low;
  };
  EXPECT_EQ(counter(1, CHIP_COUNTER_RX_UNICAST), 1u);
  EXPECT_EQ(counter(1, CHIP_COUNTER_RX_MULTICAST), 2u);
  EXPECT_EQ(counter(1, CHIP_COUNTER_RX_BROADCAST), 3u);
  EXPECT_EQ(counter(1, CHIP_COUNTER_RX_OCTETS), 6u * 64);
  EXPECT_EQ(counter(5, CHIP_COUNTER_TX_UNICAST), 1u);
  EXPECT_EQ(counter(5, CHIP_COUNTER_TX_MULTICAST), 2u);
  EXPECT_EQ(counter(5, CHIP_COUNTER_TX_BROADCAST), 3u);
  EXPECT_EQ(counter(5, CHIP_COUNTER_TX_OCTETS), 6u * 64);
}

TEST_F(Egress, MacControlIsTaken) {
  const Bytes by_type = Maker(station(5), station(1)).type(0x8808).half(5).bytes();
  const Bytes by_address = plain(0x0180c2000001, station(1));
  for (const Bytes &frame : {by_type, by_address}) EXPECT_EQ(out(1, frame), 0u);
  EXPECT_EQ(drops(1).taken, 2u);
  EXPECT_FALSE(is_known(station(1)));
}

TEST_F(Egress, UnitsNeverMeet) {
  const vchip_partner_t partner = {1, VCHIP_ABILITY_USUAL};
  for (const int32_t port : {1, 2}) ASSERT_EQ(vchip_cable_plug(1, port, &partner), 0);
  const Bytes frame = broadcast();
  ASSERT_EQ(vchip_frame_arrive(1, 1, frame.data(), 60), 0);
  EXPECT_EQ(left(), 0u);
  EXPECT_EQ(vchip_frames_ready(1), mask({2, kCpu}));
  EXPECT_FALSE(is_known(station(1)));
}

}  // namespace
