// SPDX-License-Identifier: MIT
// Every limit at three rates and three sizes of frames, the meter against its
// RFC, and what a year of time does to them.
#include <random>

#include "rule_maker.h"

namespace {

using frames::Bytes;
using frames::kBroadcast;
using frames::kSecond;
using frames::Left;
using frames::mask;
using frames::plain;
using frames::Rule;
using frames::station;

constexpr uint64_t kBytesPerStep = 2000;  // a second, of 16 kbit/s

// A limit on what comes in by port 1.
struct Limit {
  const char *name;
  void (*set)(uint32_t rate);
  uint64_t (*earned)(uint32_t rate);  // a second
  uint64_t (*cost)(uint32_t wire);    // of a frame
  uint64_t bucket;
};

uint64_t bytes_earned(uint32_t rate) {
  return rate * kBytesPerStep;
}
uint64_t bytes_of(uint32_t wire) {
  return wire;
}

void set_ingress(uint32_t rate) {
  ASSERT_EQ(rtk_rate_igrBandwidthCtrlRate_set(0, 1, static_cast<int32_t>(rate)), 0);
  ASSERT_EQ(rtk_rate_igrBandwidthCtrlEnable_set(0, 1, 1), 0);
}
void set_storm(uint32_t mode, uint32_t burst, uint32_t rate) {
  ASSERT_EQ(rtk_rate_stormControlRateMode_set(0, mode), 0);
  ASSERT_EQ(rtk_rate_stormControlBurstSize_set(0, 2, burst), 0);
  ASSERT_EQ(rtk_rate_stormControlRate_set(0, 1, 2, rate), 0);
  ASSERT_EQ(rtk_rate_stormControlEnable_set(0, 1, 2, 1), 0);
}
// Meter 7 with a bucket of so many times 128 bytes.
void set_meter(uint32_t gap, uint32_t burst, uint32_t rate) {
  ASSERT_EQ(rtk_acl_meterIncludeIfg_set(0, gap), 0);
  const chip_acl_burst sizes = {{burst, 1}};
  ASSERT_EQ(rtk_acl_meterBurstSize_set(0, 0, &sizes), 0);
  const chip_acl_meter meter = {1, rate, 0};
  ASSERT_EQ(rtk_acl_meterEntry_set(0, 7, &meter), 0);
  Rule(5).from(mask({1})).meter(7).enable();
}

const Limit kLimits[] = {
    {"Ingress", set_ingress, bytes_earned, bytes_of, 16384},
    {"StormBytes", [](uint32_t rate) { set_storm(0, 4000, rate); }, bytes_earned, bytes_of, 4000},
    {"StormPackets", [](uint32_t rate) { set_storm(1, 7, rate); },
     [](uint32_t rate) { return uint64_t{rate}; }, [](uint32_t) { return uint64_t{1}; }, 7},
    {"Meter", [](uint32_t rate) { set_meter(0, 25, rate); }, bytes_earned, bytes_of, 3200},
    {"MeterWithGap", [](uint32_t rate) { set_meter(1, 25, rate); }, bytes_earned,
     [](uint32_t wire) { return uint64_t{wire} + 20; }, 3200},
};

class EveryLimit : public frames::Switch,
                   public testing::WithParamInterface<std::tuple<Limit, uint32_t, uint32_t>> {
 protected:
  static bool passes(uint32_t wire) { return out(1, plain(kBroadcast, station(1), wire - 4)) != 0; }
};

TEST_P(EveryLimit, IsExactToTheUnitAndTheNanosecond) {
  const auto &[limit, rate, wire] = GetParam();
  limit.set(rate);
  const uint64_t cost = limit.cost(wire);
  for (uint64_t each = 0; each < limit.bucket / cost; ++each) EXPECT_TRUE(passes(wire)) << each;
  EXPECT_FALSE(passes(wire)) << "the bucket was full at the start";
  const uint64_t earned = limit.earned(rate);
  const uint64_t first = ((cost - limit.bucket % cost) * kSecond + earned - 1) / earned;
  advance(first - 1);
  EXPECT_FALSE(passes(wire));
  advance(1);
  EXPECT_TRUE(passes(wire));
  EXPECT_FALSE(passes(wire));
  // What was left over from the first counts for the second.
  const uint64_t second = ((2 * cost - limit.bucket % cost) * kSecond + earned - 1) / earned;
  advance(second - first - 1);
  EXPECT_FALSE(passes(wire));
  advance(1);
  EXPECT_TRUE(passes(wire));
  advance(3600 * kSecond);
  for (uint64_t each = 0; each < limit.bucket / cost; ++each) EXPECT_TRUE(passes(wire)) << each;
  EXPECT_FALSE(passes(wire)) << "an hour fills it and no more";
}

std::string limit_name(const testing::TestParamInfo<EveryLimit::ParamType> &each) {
  return std::string(std::get<0>(each.param).name) + "Rate" +
         std::to_string(std::get<1>(each.param)) + "Wire" + std::to_string(std::get<2>(each.param));
}

INSTANTIATE_TEST_SUITE_P(RatesAndSizes, EveryLimit,
                         testing::Combine(testing::ValuesIn(kLimits),
                                          testing::Values(1u, 77u, 62500u),
                                          testing::Values(64u, 1000u, 1518u)),
                         limit_name);

// What came until the change came at the old rate.
TEST_P(EveryLimit, AnotherRateHoldsFromItsSettingOn) {
  const auto &[limit, rate, wire] = GetParam();
  limit.set(rate);
  while (passes(wire)) {
  }
  const uint64_t cost = limit.cost(wire);
  uint64_t held = limit.bucket % cost * kSecond;
  // Half of what is missing comes at this rate, the rest at three times it.
  const uint64_t half = (cost * kSecond - held) / 2 / limit.earned(rate);
  advance(half);
  held += half * limit.earned(rate);
  limit.set(3 * rate);
  const uint64_t earned = limit.earned(3 * rate);
  const uint64_t rest = (cost * kSecond - held + earned - 1) / earned;
  advance(rest - 1);
  EXPECT_FALSE(passes(wire));
  advance(1);
  EXPECT_TRUE(passes(wire));
}

class EgressLimit : public frames::Switch,
                    public testing::WithParamInterface<std::tuple<uint32_t, uint32_t>> {};

TEST_P(EgressLimit, SendsWhenTheBucketHoldsTheFrame) {
  const auto [rate, wire] = GetParam();
  constexpr uint64_t kBucket = 16384;
  ASSERT_EQ(rtk_rate_egrBandwidthCtrlRate_set(0, 2, static_cast<int32_t>(rate)), 0);
  ASSERT_EQ(rtk_rate_egrBandwidthCtrlEnable_set(0, 2, 1), 0);
  const uint64_t at_once = kBucket / wire;
  constexpr uint64_t kHeld = 5;
  for (uint64_t each = 0; each < at_once + kHeld; ++each)
    arrive(1, plain(kBroadcast, station(1), wire - 4));
  EXPECT_EQ(count(2), at_once);
  advance(3600 * kSecond);
  const std::vector<Left> held = taken(2);
  ASSERT_EQ(held.size(), kHeld);
  for (size_t each = 0; each < held.size(); ++each) {
    const uint64_t missing = (at_once + each + 1) * wire - kBucket;
    const uint64_t earned = rate * kBytesPerStep;
    EXPECT_EQ(held[each].time, (missing * kSecond + earned - 1) / earned);
  }
}

INSTANTIATE_TEST_SUITE_P(RatesAndSizes, EgressLimit,
                         testing::Combine(testing::Values(1u, 77u, 62500u),
                                          testing::Values(64u, 1000u, 1518u)));

// RFC 2697, 3: a bucket of CBS bytes that starts full and gains CIR bytes a
// second. The chip has one bucket: what is not green is dropped, and takes
// nothing. Tokens here are bytes times 10^9, so that nothing is rounded.
class Rfc2697 {
 public:
  Rfc2697(uint64_t cir, uint64_t cbs) : cir_(cir), cbs_(cbs * kSecond), tokens_(cbs_) {}
  void pass(uint64_t nanoseconds) { tokens_ = std::min(cbs_, tokens_ + cir_ * nanoseconds); }
  bool is_green(uint64_t bytes) {
    if (tokens_ < bytes * kSecond) return false;
    tokens_ -= bytes * kSecond;
    return true;
  }

 private:
  uint64_t cir_;
  uint64_t cbs_;
  uint64_t tokens_;
};

class Meter : public frames::Switch {};

TEST_F(Meter, FollowsRfc2697) {
  for (const uint32_t rate : {1u, 40u, 5000u})
    for (const uint32_t burst : {12u, 100u, 1000u}) {
      power_on();
      set_meter(0, burst, rate);
      Rfc2697 model(rate * kBytesPerStep, burst * 128);
      std::mt19937 random(rate * 7919 + burst);
      uint32_t green = 0;
      uint32_t red = 0;
      for (int each = 0; each < 400; ++each) {
        const auto wire = static_cast<uint32_t>(64 + random() % 1455);
        const bool passed = out(1, plain(kBroadcast, station(1), wire - 4)) != 0;
        ASSERT_EQ(passed, model.is_green(wire)) << "rate " << rate << " frame " << each;
        ++(passed ? green : red);
        // On the average as long as the frame takes at twice the rate.
        const uint64_t pause = random() % (wire * kSecond / (rate * kBytesPerStep));
        advance(pause);
        model.pass(pause);
      }
      EXPECT_GT(green, 100u);
      EXPECT_GT(red, 20u);
      EXPECT_EQ(drops(1).rule, red);
    }
}

TEST_F(Meter, OfSeveralRulesIsOne) {
  set_meter(0, 12, 0);
  Rule(6).from(mask({2})).meter(7).enable();
  size_t passed = 0;
  for (int each = 0; each < 40; ++each)
    passed += out(1 + each % 2, plain(kBroadcast, station(1))) != 0 ? 1 : 0;
  EXPECT_EQ(passed, 12u * 128 / 64);
}

// A year, and in each month an hour or more of bursts: frames of the greatest
// length spend what the meter earned, in pieces of time that are no multiple of
// anything.
TEST_F(Meter, DoesNotDriftInAYear) {
  constexpr uint32_t kBurst = 65535;
  constexpr uint32_t kWire = VCHIP_FRAME_MAX + 4;
  set_meter(0, kBurst, 1);
  ASSERT_EQ(rtk_switch_maxPktLenLinkSpeed_set(0, 1, 16383), 0);
  set_vlan(1, mask({1}), mask({1}));  // what passes has nowhere to go
  Rfc2697 model(kBytesPerStep, uint64_t{kBurst} * 128);
  const Bytes frame = plain(kBroadcast, station(1), VCHIP_FRAME_MAX);
  const std::vector<vchip_arrival_t> burst(600, {frame.data(), VCHIP_FRAME_MAX, 1});
  const auto pass = [&](uint64_t nanoseconds) {
    advance(nanoseconds);
    model.pass(nanoseconds);
  };
  uint64_t green = 0;
  for (uint64_t month = 0; month < 12; ++month) {
    for (uint64_t piece = 0; piece < 20; ++piece) {
      ASSERT_EQ(vchip_frames_arrive(0, burst.data(), static_cast<uint32_t>(burst.size())), 0);
      for (size_t each = 0; each < burst.size(); ++each) green += model.is_green(kWire) ? 1 : 0;
      ASSERT_EQ(drops(1).egress, green) << "month " << month << " piece " << piece;
      pass((100 + 7 * piece) * kSecond + 333333337);
    }
    pass(30 * 24 * 3600 * kSecond + 13 * month + 1);
  }
  EXPECT_GT(vchip_clock(), 360 * 24 * 3600 * kSecond);
  EXPECT_GT(green, 12u * (512 + 19 * 12)) << "a full bucket a month, and what was earned between";
}

TEST_F(Meter, AndOtherLimitsAreAsExactAfterAYear) {
  for (const Limit &limit : kLimits) {
    power_on();
    advance(365 * 24 * 3600 * kSecond + 7);
    limit.set(3);
    const Bytes frame = plain(kBroadcast, station(1), 1000);
    while (out(1, frame) != 0) {
    }
    const uint64_t cost = limit.cost(1004);
    const uint64_t earned = limit.earned(3);
    const uint64_t wait = ((cost - limit.bucket % cost) * kSecond + earned - 1) / earned;
    advance(wait - 1);
    EXPECT_EQ(out(1, frame), 0u) << limit.name;
    advance(1);
    EXPECT_NE(out(1, frame), 0u) << limit.name;
  }
}

class Rfc2889 : public frames::Switch {};

// 5.5: ports 1 and 2 send, half of it to port 3, which is not congested, and half
// to port 4, which is.
TEST_F(Rfc2889, HeadOfLineBlockingIsNone) {
  for (const int32_t port : {3, 4}) bind(station(static_cast<uint32_t>(port)), port);
  ASSERT_EQ(rtk_rate_egrBandwidthCtrlRate_set(0, 4, 500), 0);  // 1,000,000 bytes a second
  ASSERT_EQ(rtk_rate_egrBandwidthCtrlEnable_set(0, 4, 1), 0);
  constexpr uint64_t kRounds = 2000;
  constexpr uint64_t kStep = kSecond / 1000;
  uint64_t uncongested = 0;
  uint64_t congested = 0;
  for (uint64_t round = 0; round < kRounds; ++round) {
    for (const int32_t port : {1, 2}) {
      const uint64_t from = station(static_cast<uint32_t>(port));
      arrive(port, plain(station(4), from, 996));
      arrive(port, plain(station(3), from, 996));
    }
    for (const Left &sent : taken(3)) {
      EXPECT_EQ(sent.time, round * kStep) << "no frame to port 3 waits";
      ++uncongested;
    }
    advance(kStep);
    congested += count(4);
  }
  EXPECT_EQ(uncongested, 2 * kRounds) << "and none is lost";
  EXPECT_EQ(drops(3).queue, 0u);
  EXPECT_EQ(congested, kRounds + 16) << "port 4 sends at its limit, and its bucket before";
  EXPECT_EQ(drops(4).queue, 2 * kRounds - congested - 999) << "its queue has room for one";
}

}  // namespace
