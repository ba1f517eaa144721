// SPDX-License-Identifier: MIT
// Egress: queues, their shares, the limit, pause, and time.
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <random>

#include "rule_maker.h"

namespace {

using frames::Bytes;
using frames::kSecond;
using frames::Left;
using frames::Maker;
using frames::mask;
using frames::plain;
using frames::station;

constexpr int32_t kOut = 5;

// Frames for each queue come in by port 1, tagged with the priority of that
// queue, and leave by port 5, which sends a frame of 1,000 bytes a millisecond.
class Queues : public frames::Switch {
 protected:
  void SetUp() override {
    Switch::SetUp();
    const uint32_t map[8] = {0, 1, 2, 3, 4, 5, 6, 7};
    ASSERT_EQ(rtk_qos_priMap_set(0, 8, map), 0);
    for (uint32_t priority = 0; priority < 8; ++priority)
      ASSERT_EQ(rtk_qos_1pPriRemap_set(0, priority, priority), 0);
    arrive(kOut, plain(frames::kBroadcast, station(5)));
    counts();
    limit(500);  // 1,000,000 bytes a second
  }
  static void limit(int32_t rate) {
    ASSERT_EQ(rtk_rate_egrBandwidthCtrlRate_set(0, kOut, rate), 0);
    ASSERT_EQ(rtk_rate_egrBandwidthCtrlEnable_set(0, kOut, 1), 0);
  }
  static Bytes frame_of(uint32_t queue, size_t length = 996, uint32_t number = 0) {
    Maker maker(station(5), station(1));
    maker.tag(1, queue).type(0x88b5).word(number);
    return maker.fill(length, static_cast<uint8_t>(queue)).bytes();
  }
  static void schedule(const std::array<uint32_t, 8> &weights, uint32_t algorithm) {
    ASSERT_EQ(rtk_qos_schedulingAlgorithm_set(0, kOut, algorithm), 0);
    ASSERT_EQ(rtk_qos_schedulingQueue_set(0, kOut, weights.data()), 0);
  }
  static uint32_t queue_of(const Left &left) { return left.bytes.back(); }
};

constexpr uint32_t kRoundRobin = 1;
constexpr uint32_t kFairQueueing = 0;

TEST_F(Queues, ALimitLetsTheBucketGoAtOnceAndTheRestInTime) {
  for (uint32_t number = 0; number < 20; ++number) arrive(1, frame_of(0, 992, number));
  // They leave untagged, with 988 bytes, so 992 on the wire: 16 fill 15,872 of 16,384 bytes.
  EXPECT_EQ(taken(kOut).size(), 16u);
  advance(479999);
  EXPECT_EQ(count(kOut), 0u);
  advance(1);  // 480 bytes more make 992
  const std::vector<Left> one = taken(kOut);
  ASSERT_EQ(one.size(), 1u);
  EXPECT_EQ(one[0].time, 480000u);
  advance(kSecond);
  const std::vector<Left> rest = taken(kOut);
  ASSERT_EQ(rest.size(), 3u);
  EXPECT_EQ(rest[0].time, 480000u + 992000);
  EXPECT_EQ(rest[2].time, 480000u + 3 * 992000);
}

// Which queues 10,000 frames that left in a row were of, all queues being full.
class Shares : public Queues {
 protected:
  static std::array<uint64_t, 8> shares(size_t wanted, bool bytes) {
    std::array<uint64_t, 8> sum = {};
    for (int each = 0; each < 20; ++each) arrive(1, frame_of(0, 1020));
    size_t seen = 0;
    for (uint32_t queue = 0; queue < 8; ++queue)
      for (int each = 0; each < 30; ++each) arrive(1, frame_of(queue, length_of(queue)));
    taken(kOut);
    while (seen < wanted) {
      advance(kSecond / 1000);
      for (const Left &left : taken(kOut)) {
        if (seen++ >= wanted) break;
        sum[queue_of(left)] += bytes ? left.bytes.size() + 4 : 1;
        arrive(1, frame_of(queue_of(left), length_of(queue_of(left))));
      }
    }
    return sum;
  }
  static size_t length_of(uint32_t queue) { return 200 + 100 * queue; }
};

TEST_F(Shares, OfRoundRobinAreWithinAFrame) {
  const std::array<uint32_t, 8> weights = {1, 2, 3, 4, 5, 6, 7, 100};
  schedule(weights, kRoundRobin);
  const auto sum = shares(10000, false);
  for (uint32_t queue = 1; queue < 8; ++queue) {
    const double exact = 10000.0 * weights[queue] / 128;
    EXPECT_NEAR(static_cast<double>(sum[queue]), exact, 1.0) << queue;
  }
}

TEST_F(Shares, OfFairQueueingCountBytes) {
  const std::array<uint32_t, 8> weights = {1, 1, 1, 1, 2, 2, 4, 4};
  schedule(weights, kFairQueueing);
  const auto sum = shares(10000, true);
  uint64_t total = 0;
  for (const uint64_t each : sum) total += each;
  for (uint32_t queue = 1; queue < 8; ++queue)
    EXPECT_NEAR(static_cast<double>(sum[queue]), static_cast<double>(total) * weights[queue] / 16,
                static_cast<double>(length_of(queue)))
        << queue;
}

TEST_F(Shares, OfAStrictQueueAreAll) {
  schedule({1, 1, 1, 1, 1, 1, 1, 1}, kRoundRobin);
  ASSERT_EQ(rtk_qos_queueStrictEnable_set(0, kOut, 4, 1), 0);
  const auto sum = shares(10000, false);
  EXPECT_GT(sum[4], 9900u);
}

TEST_F(Shares, AWeightOf0IsStrict) {
  schedule({1, 1, 1, 0, 1, 1, 1, 1}, kRoundRobin);
  const auto sum = shares(10000, false);
  EXPECT_GT(sum[3], 9900u);
}

// Frames of equal length by the queue, while only these have any.
class SomeQueues : public Queues {
 protected:
  static constexpr size_t kLength = 996;  // 1,000 bytes on the wire: one a millisecond

  static void fill(uint32_t queue, size_t frames) {
    for (size_t each = 0; each < frames; ++each) arrive(1, frame_of(queue, kLength + 4));
  }
  static void empty_bucket() {
    fill(0, 20);
    advance((20 * 1000 - 16384) * kSecond / 1000000);  // until the last has left
    EXPECT_EQ(count(kOut), 20u);
  }
  static std::array<size_t, 8> sent_in(uint64_t milliseconds) {
    advance(milliseconds * kSecond / 1000);
    std::array<size_t, 8> sum = {};
    for (const Left &left : taken(kOut)) ++sum[queue_of(left)];
    return sum;
  }
};

TEST_F(SomeQueues, ShareWhatTheIdleOnesLeave) {
  schedule({1, 2, 3, 4, 5, 6, 7, 8}, kRoundRobin);
  empty_bucket();
  fill(2, 500);
  fill(5, 500);
  auto sum = sent_in(300);
  EXPECT_NEAR(static_cast<double>(sum[2]), 100, 1);
  EXPECT_NEAR(static_cast<double>(sum[5]), 200, 1);
  sum = sent_in(460);
  EXPECT_EQ(sum[5], 300u) << "all that it had";
  EXPECT_EQ(sum[2], 160u) << "and alone it gets everything";
}

TEST_F(SomeQueues, AnEmptyOneHasSavedNothing) {
  schedule({1, 1, 1, 1, 1, 1, 1, 1}, kRoundRobin);
  empty_bucket();
  fill(2, 900);
  sent_in(300);
  fill(5, 300);
  const auto sum = sent_in(200);
  EXPECT_NEAR(static_cast<double>(sum[2]), 100, 1) << "the newcomer gets its share, not all";
  EXPECT_NEAR(static_cast<double>(sum[5]), 100, 1);
}

TEST_F(SomeQueues, WeightedOnesShareWhatTheStrictLeave) {
  schedule({1, 2, 3, 4, 5, 6, 7, 8}, kRoundRobin);
  ASSERT_EQ(rtk_qos_queueStrictEnable_set(0, kOut, 1, 1), 0);
  empty_bucket();
  fill(1, 150);
  fill(2, 500);
  fill(5, 500);
  auto sum = sent_in(100);
  EXPECT_EQ(sum[1], 100u);
  sum = sent_in(350);
  EXPECT_EQ(sum[1], 50u);
  EXPECT_NEAR(static_cast<double>(sum[2]), 100, 1);
  EXPECT_NEAR(static_cast<double>(sum[5]), 200, 1);
}

TEST_F(SomeQueues, AnotherLimitHoldsFromItsSettingOn) {
  fill(0, 16);
  limit(1);
  const std::vector<Left> first = taken(kOut);
  EXPECT_EQ(first.size(), 16u);
  const Bytes frame = frame_of(0, 1000);
  arrive(1, frame);
  const uint64_t missing = 1000 - (16384 - 16 * 1000);
  advance(kSecond / 10);  // 200 bytes
  limit(1000);
  advance(kSecond);
  ASSERT_GT(missing, 200u);
  EXPECT_EQ(only(kOut).time, kSecond / 10 + (missing - 200) * kSecond / 2000000);
}

TEST_F(Queues, OfTwoStrictQueuesTheHigherIsFirst) {
  schedule({0, 0, 0, 0, 0, 0, 0, 0}, kRoundRobin);
  for (int each = 0; each < 17; ++each) arrive(1, frame_of(0, 1020));
  for (const uint32_t queue : {2, 6, 4}) arrive(1, frame_of(queue));
  taken(kOut);
  advance(kSecond);
  std::vector<uint32_t> order;
  for (const Left &left : taken(kOut)) order.push_back(queue_of(left));
  EXPECT_EQ(order, (std::vector<uint32_t>{6, 4, 2, 0}));
}

TEST_F(Queues, NoFrameOfAFlowOvertakesAnother) {
  schedule({3, 5, 7, 9, 11, 13, 17, 19}, kFairQueueing);
  std::mt19937 random(1);
  std::array<uint32_t, 8> sent = {};
  std::array<uint32_t, 8> seen = {};
  const auto look = [&] {
    for (const Left &left : taken(kOut)) {
      const uint32_t number = static_cast<uint32_t>(left.bytes[16]) << 8 | left.bytes[17];
      EXPECT_EQ(number, seen[queue_of(left)]++);
    }
  };
  for (int each = 0; each < 2000; ++each) {
    const uint32_t queue = random() % 8;
    arrive(1, frame_of(queue, 64 + random() % 500, sent[queue]++));
    if (random() % 3 == 0) advance(random() % 700000);
    look();
  }
  advance(100 * kSecond);
  look();
  EXPECT_EQ(sent, seen);
}

TEST_F(Queues, AreFullAt1000Frames) {
  limit(0);
  for (int each = 0; each < 17; ++each) arrive(1, frame_of(7, 1020));
  for (int each = 0; each < 1100; ++each) arrive(1, frame_of(3, 200));
  EXPECT_EQ(drops(kOut).queue, 100u);
  EXPECT_EQ(drops(1).forwarded, drops(1).received) << "they had left the switching steps";
}

TEST_F(Queues, AnotherPortIsNotHeldUp) {
  limit(0);
  arrive(6, plain(frames::kBroadcast, station(6)));
  counts();
  for (int each = 0; each < 2000; ++each) {
    arrive(1, frame_of(0));
    arrive(1, plain(station(6), station(1)));
  }
  EXPECT_EQ(count(6), 2000u);
}

TEST_F(Queues, WhatIsHeldGoesWithTheLink) {
  limit(0);
  for (int each = 0; each < 30; ++each) arrive(1, frame_of(0, 1020));
  EXPECT_EQ(count(kOut), 16u);
  ASSERT_EQ(vchip_cable_pull(0, kOut), 0);
  const vchip_partner_t partner = {1, VCHIP_ABILITY_USUAL};
  ASSERT_EQ(vchip_cable_plug(0, kOut, &partner), 0);
  EXPECT_EQ(drops(kOut).held, 14u);
  limit(0xfffff);
  advance(kSecond);
  EXPECT_EQ(count(kOut), 0u);
}

TEST_F(Queues, ALimitThatIsLiftedLetsAllGoAtThatTime) {
  limit(0);
  for (int each = 0; each < 30; ++each) arrive(1, frame_of(0, 1020));
  taken(kOut);
  advance(1000);
  ASSERT_EQ(rtk_rate_egrBandwidthCtrlEnable_set(0, kOut, 0), 0);
  ASSERT_EQ(rtk_rate_egrBandwidthCtrlEnable_set(0, kOut, 1), 0);
  const std::vector<Left> left = taken(kOut);
  ASSERT_EQ(left.size(), 14u);
  EXPECT_EQ(left[13].time, 1000u);
}

Bytes pause(uint32_t quanta, uint64_t to = 0x0180c2000001) {
  return Maker(to, station(5)).type(0x8808).half(1).half(quanta).bytes();
}

class Pause : public Queues {
 protected:
  void SetUp() override {
    Queues::SetUp();
    ASSERT_EQ(rtk_rate_egrBandwidthCtrlEnable_set(0, kOut, 0), 0);
    ASSERT_EQ(rtk_port_flowCtrlEnable_set(0, kOut, 1), 0);
    uint32_t sends = 0;
    uint32_t obeys = 0;
    ASSERT_EQ(rtk_port_flowctrl_get(0, kOut, &sends, &obeys), 0);
    ASSERT_EQ(obeys, 1u);
  }
};

TEST_F(Pause, HoldsForItsQuantaAtTheSpeedOfTheLink) {
  arrive(kOut, pause(100));  // 100 times 512 bits at 1 Gbit/s
  arrive(1, frame_of(0));
  EXPECT_EQ(count(kOut), 0u);
  advance(51199);
  EXPECT_EQ(count(kOut), 0u);
  advance(1);
  const std::vector<Left> left = taken(kOut);
  ASSERT_EQ(left.size(), 1u);
  EXPECT_EQ(left[0].time, 51200u);
  EXPECT_EQ(drops(kOut).taken, 1u);
}

TEST_F(Pause, IsLongerOnASlowerLink) {
  const std::pair<uint32_t, uint64_t> speeds[] = {{VCHIP_ABILITY_100_FULL, 5120},
                                                  {VCHIP_ABILITY_10_FULL, 51200}};
  for (const auto &[ability, quantum] : speeds) {
    const vchip_partner_t slow = {1, ability | VCHIP_ABILITY_PAUSE};
    ASSERT_EQ(vchip_cable_plug(0, kOut, &slow), 0);
    const uint64_t start = vchip_clock();
    arrive(kOut, pause(3));
    arrive(1, frame_of(0));
    EXPECT_EQ(count(kOut), 0u);
    advance(kSecond);
    EXPECT_EQ(only(kOut).time, start + 3 * quantum);
  }
}

TEST_F(Pause, OtherOpcodesAreTakenWithoutEffect) {
  for (const uint32_t opcode : {0u, 2u, 0x0101u}) {
    const Bytes frame =
        Maker(0x0180c2000001, station(5)).type(0x8808).half(opcode).half(1000).bytes();
    EXPECT_EQ(out(kOut, frame), 0u);
    EXPECT_EQ(out(1, frame_of(0)), mask({kOut}));
  }
}

TEST_F(Pause, TheLastOneCounts) {
  arrive(kOut, pause(65535));
  arrive(1, frame_of(0));
  arrive(kOut, pause(0));
  EXPECT_EQ(count(kOut), 1u);
  arrive(kOut, pause(10));
  advance(100);
  arrive(kOut, pause(10));
  arrive(1, frame_of(0));
  advance(kSecond);
  EXPECT_EQ(taken(kOut).at(0).time, 100u + 5120);
}

TEST_F(Pause, ToAnotherAddressIsTakenAndHoldsNothing) {
  EXPECT_EQ(out(kOut, pause(1000, station(1))), 0u);
  EXPECT_EQ(out(1, frame_of(0)), mask({kOut}));
}

TEST_F(Pause, WithoutAgreementHoldsNothing) {
  ASSERT_EQ(rtk_port_flowCtrlEnable_set(0, kOut, 0), 0);
  EXPECT_EQ(out(kOut, pause(1000)), 0u);
  EXPECT_EQ(out(1, frame_of(0)), mask({kOut}));
}

TEST_F(Pause, HoldsWhatTheProcessorSendsToo) {
  arrive(kOut, pause(10));
  const Bytes frame = plain(station(5), station(9));
  ASSERT_EQ(vchip_frame_transmit(0, kOut, frame.data(), 60), 0);
  EXPECT_EQ(count(kOut), 0u);
  EXPECT_EQ(vchip_clock_next(), 5120u);
  advance(5120);
  EXPECT_EQ(count(kOut), 1u);
  EXPECT_EQ(vchip_clock_next(), UINT64_MAX);
}

TEST_F(Pause, ATaggedOneIsAnOrdinaryFrame) {
  const Bytes frame = Maker(station(1), station(5)).tag(1).type(0x8808).half(1).half(9).bytes();
  EXPECT_NE(out(kOut, frame), 0u);
}

// What left each port and when, by one way of dividing the time.
std::string history(uint64_t seed, uint64_t step) {
  std::string text;
  EXPECT_EQ(vchip_reset(), 0);
  const vchip_partner_t partner = {1, VCHIP_ABILITY_USUAL};
  for (int32_t port = 0; port < 6; ++port) EXPECT_EQ(vchip_cable_plug(0, port, &partner), 0);
  EXPECT_EQ(rtk_diag_portMacLocalLoopbackEnable_set(0, 4, 1), 0);
  for (int32_t port = 2; port < 6; ++port) {
    EXPECT_EQ(rtk_rate_egrBandwidthCtrlRate_set(0, port, 3 + port * 40), 0);
    EXPECT_EQ(rtk_rate_egrBandwidthCtrlEnable_set(0, port, 1), 0);
  }
  EXPECT_EQ(rtk_rate_igrBandwidthCtrlRate_set(0, 0, 1), 0);
  EXPECT_EQ(rtk_rate_igrBandwidthCtrlEnable_set(0, 0, 1), 0);
  EXPECT_EQ(rtk_rate_stormControlRate_set(0, 1, 0, 3), 0);
  EXPECT_EQ(rtk_rate_stormControlEnable_set(0, 1, 0, 1), 0);
  const chip_acl_meter meter = {1, 2, 0};
  const chip_acl_burst burst = {{12, 12}};
  EXPECT_EQ(rtk_acl_meterEntry_set(0, 7, &meter), 0);
  EXPECT_EQ(rtk_acl_meterBurstSize_set(0, 0, &burst), 0);
  frames::Rule(5).from(mask({2})).meter(7).enable();
  EXPECT_EQ(rtk_l2_aging_set(0, 1), 0);
  std::mt19937 random(static_cast<uint32_t>(seed));
  const auto any = [&] { return station(static_cast<uint32_t>(random() % 6)); };
  uint64_t clock = 0;
  for (int each = 0; each < 200; ++each) {
    const uint64_t until = clock + random() % 40000000;
    while (clock < until) {
      const uint64_t part = std::min(step, until - clock);
      EXPECT_EQ(vchip_clock_advance(part), 0);
      clock += part;
    }
    // Half of the destinations never send.
    const uint64_t to = station(static_cast<uint32_t>(random() % 12));
    const Bytes frame = plain(to, any(), 60 + random() % 1400);
    const auto port = static_cast<int32_t>(random() % 6);
    EXPECT_EQ(vchip_frame_arrive(0, port, frame.data(), static_cast<uint32_t>(frame.size())), 0);
  }
  EXPECT_EQ(vchip_clock_advance(3 * kSecond), 0);
  Bytes room(2000);
  vchip_frame_t frame = {room.data(), 2000, 0, 0, 0, 0};
  for (int32_t port = 0; port < VCHIP_PORTS; ++port)
    while (vchip_frame_leave(0, port, &frame) == 1)
      text += std::to_string(port) + ' ' + std::to_string(frame.time) + ' ' +
              std::to_string(frame.length) + ' ' + std::to_string(room[11]) + '\n';
  vchip_drops_t limited[3] = {};
  for (int32_t port = 0; port < 3; ++port) {
    EXPECT_EQ(vchip_drops_get(0, port, &limited[port]), 0);
    text += std::to_string(limited[port].ingress_rate) + ' ' + std::to_string(limited[port].storm) +
            ' ' + std::to_string(limited[port].rule) + '\n';
  }
  EXPECT_GT(limited[0].ingress_rate, 0u);
  EXPECT_GT(limited[1].storm, 0u);
  EXPECT_GT(limited[2].rule, 0u);
  return text;
}

TEST(Time, MayBeDividedInAnyWay) {
  for (const uint64_t seed : {1, 2, 3}) {
    const std::string whole = history(seed, UINT64_MAX);
    EXPECT_GT(whole.size(), 1000u);
    for (const uint64_t step : {1000003u, 54321u}) EXPECT_EQ(history(seed, step), whole) << step;
  }
}

}  // namespace
