// SPDX-License-Identifier: MIT
// Limits, storm control and meters: what they count, and from when on.
#include <swctl/platform/sdk.h>

#include "switch.h"

namespace {

using frames::Bytes;
using frames::kSecond;
using frames::mask;
using frames::plain;
using frames::station;

class Rates : public frames::Switch {
 protected:
  static constexpr uint64_t kBytesPerUnit = 2000;  // a second, of 16 kbit/s

  // Frames of a wire length that pass until the first is dropped.
  static size_t passes(int32_t port, uint32_t wire) {
    const Bytes frame = plain(station(2), station(1), wire - 4);
    size_t passed = 0;
    counts();
    for (;;) {
      arrive(port, frame);
      if (counts().empty()) return passed;
      ++passed;
    }
  }
};

TEST_F(Rates, ALongTimeFillsTheBucketAndNoMore) {
  ASSERT_EQ(rtk_rate_igrBandwidthCtrlRate_set(0, 1, 0xfffff), 0);
  ASSERT_EQ(rtk_rate_igrBandwidthCtrlEnable_set(0, 1, 1), 0);
  EXPECT_EQ(passes(1, 1024), 16u);
  advance(3600 * kSecond);
  EXPECT_EQ(passes(1, 1024), 16u);
  advance(365 * 24 * 3600 * kSecond);
  EXPECT_EQ(passes(1, 1024), 16u);
}

TEST_F(Rates, SpendEveryByteThatWasEarned) {
  constexpr uint64_t kStep = 7000001;  // nanoseconds; a third of a byte more than 14,000
  ASSERT_EQ(rtk_rate_igrBandwidthCtrlRate_set(0, 1, 1), 0);
  ASSERT_EQ(rtk_rate_igrBandwidthCtrlEnable_set(0, 1, 1), 0);
  EXPECT_EQ(passes(1, 1024), 16u);
  uint64_t passed = 0;
  constexpr int kSteps = 8000;
  for (int step = 0; step < kSteps; ++step) {
    advance(kStep);
    arrive(1, plain(station(2), station(1), 64 - 4));
    passed += counts().empty() ? 0 : 1;
  }
  // Every byte that came in was spent but for what is less than a frame.
  const uint64_t earned = kStep * kSteps * kBytesPerUnit / kSecond;
  EXPECT_EQ(passed, earned / 64);
}

TEST_F(Rates, AnotherRateHoldsFromItsSettingOn) {
  ASSERT_EQ(rtk_rate_igrBandwidthCtrlRate_set(0, 1, 1), 0);
  ASSERT_EQ(rtk_rate_igrBandwidthCtrlEnable_set(0, 1, 1), 0);
  EXPECT_EQ(passes(1, 1024), 16u);
  advance(kSecond / 10);  // 200 bytes
  ASSERT_EQ(rtk_rate_igrBandwidthCtrlRate_set(0, 1, 1000), 0);
  advance(412000);  // 824 more at 2,000,000 bytes a second
  EXPECT_EQ(passes(1, 1024), 1u);
}

TEST_F(Rates, TwoPortsHaveTwoBuckets) {
  for (const int32_t port : {1, 2}) {
    ASSERT_EQ(rtk_rate_igrBandwidthCtrlRate_set(0, port, 1), 0);
    ASSERT_EQ(rtk_rate_igrBandwidthCtrlEnable_set(0, port, 1), 0);
  }
  EXPECT_EQ(passes(1, 1024), 16u);
  EXPECT_EQ(drops(1).ingress_rate, 1u);
  arrive(2, plain(station(9), station(8), 1020));
  EXPECT_FALSE(counts().empty());
}

// What a storm type lets pass, of frames to an address.
class Storms : public Rates {
 protected:
  static void control(uint32_t type, uint32_t rate) {
    ASSERT_EQ(rtk_rate_stormControlRate_set(0, 1, type, rate), 0);
    ASSERT_EQ(rtk_rate_stormControlEnable_set(0, 1, type, 1), 0);
  }
  static size_t passes_to(uint64_t to, uint32_t wire, size_t sent) {
    size_t passed = 0;
    counts();
    for (size_t each = 0; each < sent; ++each) {
      arrive(1, plain(to, station(1), wire - 4));
      passed += counts().empty() ? 0 : 1;
    }
    return passed;
  }
  static uint32_t exceeded(uint32_t type) {
    uint32_t flag = 7;
    EXPECT_EQ(rtk_rate_stormControlExceed_get(0, 1, type, &flag), 0);
    return flag;
  }
};

constexpr uint64_t kGroup = 0x010000000001;

TEST_F(Storms, CountFramesASecond) {
  ASSERT_EQ(rtk_rate_stormControlBurstSize_set(0, 2, 3), 0);
  control(2, 5);
  EXPECT_EQ(passes_to(frames::kBroadcast, 64, 10), 3u) << "the burst";
  EXPECT_EQ(exceeded(2), 1u);
  ASSERT_EQ(rtk_rate_stormControlExceed_reset(0, 1, 2), 0);
  EXPECT_EQ(exceeded(2), 0u);
  advance(kSecond / 5 - 1);
  EXPECT_EQ(passes_to(frames::kBroadcast, 64, 1), 0u);
  advance(1);
  EXPECT_EQ(passes_to(frames::kBroadcast, 1518, 2), 1u) << "whatever the length";
  EXPECT_EQ(drops(1).storm, 7u + 1 + 1);
}

TEST_F(Storms, CountBytesInUnitsOf16Kilobits) {
  ASSERT_EQ(rtk_rate_stormControlRateMode_set(0, 0), 0);
  control(2, 1);
  EXPECT_EQ(passes_to(frames::kBroadcast, 506, 10), 3u) << "1,518 bytes at least";
  advance(kSecond / 4 + 3 * kSecond / 1000 - 1);  // 506 bytes at 2,000 a second take 253 ms
  EXPECT_EQ(passes_to(frames::kBroadcast, 506, 1), 0u);
  advance(1);
  EXPECT_EQ(passes_to(frames::kBroadcast, 506, 2), 1u);
}

TEST_F(Storms, ALargerBurstAddsTheDifference) {
  control(2, 0);
  EXPECT_EQ(passes_to(frames::kBroadcast, 64, 5), 1u);
  ASSERT_EQ(rtk_rate_stormControlBurstSize_set(0, 2, 4), 0);
  EXPECT_EQ(passes_to(frames::kBroadcast, 64, 5), 3u);
}

TEST_F(Storms, AskTheirTypesInOrderAndChargeNoLaterOne) {
  control(1, 0);
  control(3, 0);
  control(4, 0);
  EXPECT_EQ(passes_to(kGroup, 64, 1), 1u) << "unknown multicast, multicast and flooded";
  EXPECT_EQ(passes_to(kGroup, 64, 1), 0u);
  EXPECT_EQ(exceeded(1), 1u);
  EXPECT_EQ(exceeded(3), 0u);
  EXPECT_EQ(exceeded(4), 0u);
  EXPECT_EQ(passes_to(frames::kBroadcast, 64, 1), 0u) << "flooded as well";
  EXPECT_EQ(exceeded(4), 1u);
}

TEST_F(Storms, KnownUnicastMeetsNone) {
  for (uint32_t type = 0; type < 5; ++type) control(type, 0);
  arrive(2, plain(station(1), station(2)));
  EXPECT_EQ(passes_to(station(2), 64, 4), 4u);
  EXPECT_EQ(passes_to(station(3), 64, 2), 1u);
  EXPECT_EQ(exceeded(0), 1u);
}

TEST_F(Storms, KnownMulticastIsMulticastAlone) {
  chip_l2_mcast_entry group = {};
  group.vid = 1;
  group.mac[0] = 1;
  group.mac[5] = 1;
  group.portmask = mask({5});
  ASSERT_EQ(rtk_l2_mcastAddr_add(0, &group), 0);
  control(1, 0);
  control(4, 0);
  EXPECT_EQ(passes_to(kGroup, 64, 3), 3u);
  control(3, 0);
  EXPECT_EQ(passes_to(kGroup, 64, 3), 1u);
}

TEST_F(Storms, TheProcessorMeetsNone) {
  for (uint32_t type = 0; type < 5; ++type) control(type, 0);
  for (int each = 0; each < 3; ++each)
    EXPECT_NE(out(kCpu, plain(frames::kBroadcast, station(9))), 0u);
}

// Rules for port 1 and port 2 that share meter 7.
class Meters : public Rates {
 protected:
  void SetUp() override {
    Rates::SetUp();
    add_rule(10, 1, 7);
    add_rule(11, 2, 7);
  }
  static void add_rule(uint32_t rule, int32_t port, uint32_t meter) {
    const uint32_t zero = 0;
    const uint32_t ports = ~(uint32_t{1} << port);
    ASSERT_EQ(rtk_acl_ruleEntryField_write(0, 0, rule, CHIP_ACL_FIELD_IN_PORTS,
                                           reinterpret_cast<const uint8_t *>(&zero),
                                           reinterpret_cast<const uint8_t *>(&ports)),
              0);
    chip_acl_action action = {};
    action.word[CHIP_ACL_WORD_METER] = 1;
    action.word[CHIP_ACL_WORD_METER_NUMBER] = meter;
    ASSERT_EQ(rtk_acl_ruleAction_set(0, 0, rule, &action), 0);
    ASSERT_EQ(rtk_acl_ruleValidate_set(0, 0, rule, 1), 0);
  }
  static void set(uint32_t enable, uint32_t rate, uint32_t slot) {
    const chip_acl_meter entry = {enable, rate, slot};
    ASSERT_EQ(rtk_acl_meterEntry_set(0, 7, &entry), 0);
  }
  static void bursts(uint32_t first, uint32_t second) {
    const chip_acl_burst burst = {{first, second}};
    ASSERT_EQ(rtk_acl_meterBurstSize_set(0, 0, &burst), 0);
  }
};

TEST_F(Meters, HoldTheirBurstAndAreShared) {
  ASSERT_EQ(rtk_acl_meterIncludeIfg_set(0, 0), 0);
  bursts(8, 16);  // 1,024 and 2,048 bytes
  set(1, 1, 0);
  EXPECT_EQ(passes(1, 256), 4u);
  EXPECT_EQ(drops(1).rule, 1u);
  EXPECT_EQ(passes(2, 256), 0u) << "one bucket for both rules";
  advance(128 * kSecond / 1000 - 1);  // 256 bytes at 2,000 a second
  EXPECT_EQ(passes(2, 256), 0u);
  advance(1);
  EXPECT_EQ(passes(1, 256), 1u);
}

TEST_F(Meters, TheOtherSlotIsAnotherSize) {
  ASSERT_EQ(rtk_acl_meterIncludeIfg_set(0, 0), 0);
  bursts(8, 16);
  set(1, 0, 1);
  EXPECT_EQ(passes(1, 256), 8u);
  bursts(8, 20);
  EXPECT_EQ(passes(1, 256), 2u) << "a larger size adds the difference";
}

TEST_F(Meters, CountTheGapIfTold) {
  ASSERT_EQ(rtk_acl_meterIncludeIfg_set(0, 1), 0);
  bursts(8, 16);
  set(1, 0, 0);
  EXPECT_EQ(passes(1, 256), 1024 / (256 + 20));
}

TEST_F(Meters, WhoIsDisabledLetsAllPass) {
  bursts(1, 1);
  set(0, 0, 0);
  for (int each = 0; each < 50; ++each) EXPECT_NE(out(1, plain(station(2), station(1), 1000)), 0u);
}

TEST_F(Meters, CountingComesFirst) {
  chip_acl_action action = {};
  action.word[CHIP_ACL_WORD_METER] = 1;
  action.word[CHIP_ACL_WORD_METER_NUMBER] = 7;
  action.word[CHIP_ACL_WORD_COUNT] = 1;
  action.word[CHIP_ACL_WORD_COUNT_COUNTER] = 3;
  ASSERT_EQ(rtk_acl_ruleAction_set(0, 0, 10, &action), 0);
  ASSERT_EQ(rtk_acl_meterIncludeIfg_set(0, 0), 0);
  bursts(2, 2);
  set(1, 0, 0);
  EXPECT_EQ(passes(1, 128), 2u);
  uint32_t packets[2] = {9, 9};
  uint32_t octets[2] = {9, 9};
  ASSERT_EQ(rtk_acl_statPktCnt_get(0, 3, packets), 0);
  ASSERT_EQ(rtk_acl_statByteCnt_get(0, 3, octets), 0);
  EXPECT_EQ(packets[1], 3u);
  EXPECT_EQ(octets[1], 3u * 128);
}

}  // namespace
