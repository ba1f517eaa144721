// SPDX-License-Identifier: MIT
// Egress masks, flooding of unknown unicast, ingress filter.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "fail_each.h"

namespace {

using swctl_test::chip_answers;

constexpr user_pbmp_t kNothing = {{0, 0, 0, 0, 0, 0, 0, 0}};
constexpr user_pbmp_t kNoise = {{0x5A5A5A5A, 1, 2, 3, 4, 5, 6, 7}};

class Flood : public swctl_test::LibraryTest {
 protected:
  void SetUp() override {
    LibraryTest::SetUp();
    ASSERT_EQ(rtk_l2_lookupMissFloodPortMaskIdx_set(1, 2, 5), 0);
    swprobe::forget();
  }
  static uint32_t flooded(uint32_t unit = 1) { return vchip::forward_masks(unit).at(5); }
};

void expect_words(const user_pbmp_t &ports, uint32_t first) {
  EXPECT_EQ(ports.word[0], first);
  for (int word = 1; word < USER_PBMP_WORDS; ++word) EXPECT_EQ(ports.word[word], 0u) << word;
}

void expect_noise(const user_pbmp_t &ports) {
  for (int word = 0; word < USER_PBMP_WORDS; ++word)
    EXPECT_EQ(ports.word[word], kNoise.word[word]) << word;
}

TEST_F(Flood, EgressSetWritesTheFirstWord) {
  const user_pbmp_t ports = {{0x10000005, 1, 2, 3, 4, 5, 6, 0xFFFFFFFF}};
  EXPECT_EQ(user_port_egress_set(0, 1, 5, 99, ports), 0);
  EXPECT_CALLS("rtk_port_isolation_set(unit=1, port=5, mask=0x10000005) = 0");
  EXPECT_EQ(vchip::forwarding(1, 5).isolation, 0x10000005u);
  EXPECT_NE(vchip::forwarding(0, 5).isolation, 0x10000005u);
}

TEST_F(Flood, EgressSetCarriesEachOfThirtyTwoBits) {
  chip_answers("rtk_port_isolation_set", 3);
  for (int bit = 0; bit < 32; ++bit) {
    user_pbmp_t ports = {};
    ports.word[0] = uint32_t{1} << bit;
    swprobe::forget();
    EXPECT_EQ(user_port_egress_set(0, 1, 5, 0, ports), 3);
    EXPECT_EQ(static_cast<uint32_t>(swprobe::take().at(0).in("mask")), ports.word[0]);
  }
}

TEST_F(Flood, EgressSetOfOtherWordsIsEmpty) {
  const user_pbmp_t ports = {{0, ~0u, ~0u, ~0u, ~0u, ~0u, ~0u, ~0u}};
  EXPECT_EQ(user_port_egress_set(0, 1, 5, 0, ports), 0);
  EXPECT_CALLS("rtk_port_isolation_set(unit=1, port=5, mask=0x0) = 0");
}

TEST_F(Flood, EgressSetReturnsAFailure) {
  chip_answers("rtk_port_isolation_set", -5);
  EXPECT_EQ(user_port_egress_set(0, 1, 5, 0, kNothing), -5);
}

TEST_F(Flood, EgressGetWritesAllWords) {
  ASSERT_EQ(rtk_port_isolation_set(1, 5, 0x10000005), 0);
  swprobe::forget();
  user_pbmp_t ports = kNoise;
  EXPECT_EQ(user_port_egress_get(0, 1, 5, 99, &ports), 0);
  expect_words(ports, 0x10000005);
  EXPECT_CALLS("rtk_port_isolation_get(unit=1, port=5, mask=>0x10000005) = 0");
}

TEST_F(Flood, EgressGetLeavesTheBitmapAloneOnFailure) {
  chip_answers("rtk_port_isolation_get", -5, {{"mask", 1}});
  user_pbmp_t ports = kNoise;
  EXPECT_EQ(user_port_egress_get(0, 1, 5, 0, &ports), -5);
  expect_noise(ports);
}

TEST_F(Flood, EgressGetTakesAPositiveResult) {
  chip_answers("rtk_port_isolation_get", 5, {{"mask", 0x80000001}});
  user_pbmp_t ports = kNoise;
  EXPECT_EQ(user_port_egress_get(0, 1, 5, 0, &ports), 5);
  expect_words(ports, 0x80000001);
}

TEST_F(Flood, PortsSetWritesTheMaskAtTheChipsIndex) {
  const user_pbmp_t ports = {{0x6, ~0u, 0, 0, 0, 0, 0, 1}};
  EXPECT_EQ(user_ulf_flood_ports_set(0, 1, ports), 0);
  EXPECT_CALLS(
      "rtk_l2_lookupMissFloodPortMaskIdx_get(unit=1, type=2, index=>5) = 0",
      "rtk_l2_lookupMissFloodPortMask_set_with_idx(unit=1, type=2, index=5, mask=0x6) = 0");
  EXPECT_EQ(flooded(), 0x6u);
  EXPECT_NE(flooded(0), 0x6u);
}

TEST_F(Flood, PortsGetReadsTheMaskAtTheChipsIndex) {
  ASSERT_EQ(user_ulf_flood_ports_set(0, 1, {{0x1000000C, 0, 0, 0, 0, 0, 0, 0}}), 0);
  swprobe::forget();
  user_pbmp_t ports = kNoise;
  EXPECT_EQ(user_ulf_flood_ports_get(0, 1, &ports), 0);
  expect_words(ports, 0x1000000C);
  EXPECT_CALLS("rtk_l2_lookupMissFloodPortMaskIdx_get(unit=1, type=2, index=>5) = 0",
               "rtk_l2_mcastFwdPortmask_get(unit=1, index=5, mask=>0x1000000c, extra=>0x0) = 0");
}

TEST_F(Flood, AddAndRemoveChangeOneBit) {
  ASSERT_EQ(user_ulf_flood_ports_set(0, 1, {{0x3, 0, 0, 0, 0, 0, 0, 0}}), 0);
  swprobe::forget();
  EXPECT_EQ(user_ulf_flood_port_add_remove(0, 1, 5, 7), 0);
  EXPECT_CALLS(
      "rtk_l2_lookupMissFloodPortMaskIdx_get(unit=1, type=2, index=>5) = 0",
      "rtk_l2_mcastFwdPortmask_get(unit=1, index=5, mask=>0x3, extra=>0x0) = 0",
      "rtk_l2_lookupMissFloodPortMask_set_with_idx(unit=1, type=2, index=5, mask=0x23) = 0");
  EXPECT_EQ(flooded(), 0x23u);
  EXPECT_EQ(user_ulf_flood_port_add_remove(0, 1, 1, 0), 0);
  EXPECT_EQ(flooded(), 0x21u);
}

TEST_F(Flood, AMaskThatDoesNotChangeIsWrittenAllTheSame) {
  ASSERT_EQ(user_ulf_flood_ports_set(0, 1, {{0x3, 0, 0, 0, 0, 0, 0, 0}}), 0);
  swprobe::forget();
  EXPECT_EQ(user_ulf_flood_port_add_remove(0, 1, 1, 1), 0);
  EXPECT_EQ(swprobe::take().at(2).in("mask"), 3);
  EXPECT_EQ(user_ulf_flood_port_add_remove(0, 1, 9, 0), 0);
  EXPECT_EQ(swprobe::take().at(2).in("mask"), 3);
}

TEST_F(Flood, EveryPortOfTheMask) {
  for (int port = 0; port < 32; ++port) {
    const uint32_t bit = uint32_t{1} << port;
    for (uint32_t before : {0u, 0xFFFFFFFFu, 0x5A5A5A5Au}) {
      swprobe::clear_plan();
      chip_answers("rtk_l2_mcastFwdPortmask_get", 0, {{"mask", before}});
      chip_answers("rtk_l2_lookupMissFloodPortMask_set_with_idx", 4);
      swprobe::forget();
      EXPECT_EQ(user_ulf_flood_port_add_remove(0, 1, port, 1), 4);
      EXPECT_EQ(user_ulf_flood_port_add_remove(0, 1, port, 0), 4);
      const auto calls = swprobe::take();
      ASSERT_EQ(calls.size(), 6u);
      EXPECT_EQ(static_cast<uint32_t>(calls[2].in("mask")), before | bit);
      EXPECT_EQ(static_cast<uint32_t>(calls[5].in("mask")), before & ~bit);
    }
  }
}

TEST_F(Flood, APortOutsideTheMaskChangesNothing) {
  for (int32_t port : {32, 33, 255, -1, INT32_MIN, INT32_MAX}) {
    chip_answers("rtk_l2_mcastFwdPortmask_get", 0, {{"mask", 0x5}});
    swprobe::forget();
    EXPECT_EQ(user_ulf_flood_port_add_remove(0, 1, port, 1), 0);
    EXPECT_EQ(user_ulf_flood_port_add_remove(0, 1, port, 0), 0);
    EXPECT_EQ(flooded(), 0x5u) << port;
  }
}

TEST_F(Flood, TheFirstFailureEndsEachFunction) {
  const auto nothing = [] {};
  user_pbmp_t ports = kNoise;
  const uint32_t before = flooded();
  swctl_test::fail_each(
      nothing, [&] { return user_ulf_flood_port_add_remove(0, 1, 5, 0); },
      [&](const swctl_test::FailedRun &run) { swctl_test::expect_end(run); });
  EXPECT_EQ(flooded(), before & ~0x20u) << "from the run without a failure";
  swctl_test::fail_each(
      nothing, [&] { return user_ulf_flood_ports_set(0, 1, kNothing); }, swctl_test::expect_end);
  swctl_test::fail_each([&] { ports = kNoise; },
                        [&] { return user_ulf_flood_ports_get(0, 1, &ports); },
                        [&](const swctl_test::FailedRun &run) {
                          swctl_test::expect_end(run);
                          expect_noise(ports);
                        });
}

TEST_F(Flood, AFailedReadLeavesTheChipAlone) {
  for (const char *read :
       {"rtk_l2_lookupMissFloodPortMaskIdx_get", "rtk_l2_mcastFwdPortmask_get"}) {
    swprobe::clear_plan();
    const uint32_t before = flooded();
    chip_answers(read, -5);
    EXPECT_EQ(user_ulf_flood_port_add_remove(0, 1, 5, 0), -5);
    EXPECT_EQ(flooded(), before);
  }
}

TEST_F(Flood, PositiveResultsAreSuccess) {
  chip_answers("rtk_l2_lookupMissFloodPortMaskIdx_get", 3, {{"index", 6}});
  chip_answers("rtk_l2_mcastFwdPortmask_get", 4, {{"mask", 1}, {"extra", 9}});
  user_pbmp_t ports = kNoise;
  EXPECT_EQ(user_ulf_flood_ports_get(0, 1, &ports), 4);
  expect_words(ports, 1);
  EXPECT_EQ(user_ulf_flood_port_add_remove(0, 1, 1, 1), 0);
  EXPECT_EQ(vchip::forward_masks(1).at(6), 3u);
  EXPECT_EQ(user_ulf_flood_ports_set(0, 1, kNothing), 0);
  EXPECT_EQ(vchip::forward_masks(1).at(6), 0u);
}

TEST_F(Flood, IngressFilterIsZeroOrOne) {
  EXPECT_EQ(user_port_ifilter_set(0, 1, 5, 7), 0);
  EXPECT_TRUE(vchip::tags(1, 5).ingress_filter);
  EXPECT_FALSE(vchip::tags(0, 5).ingress_filter);
  EXPECT_EQ(user_port_ifilter_set(0, 1, 5, 0), 0);
  EXPECT_FALSE(vchip::tags(1, 5).ingress_filter);
  EXPECT_CALLS("rtk_vlan_portIgrFilter_set(unit=1, port=5, enable=1) = 0",
               "rtk_vlan_portIgrFilter_set(unit=1, port=5, enable=0) = 0");
  for (int64_t result : {-5, 5}) {
    swprobe::clear_plan();
    chip_answers("rtk_vlan_portIgrFilter_set", result);
    EXPECT_EQ(user_port_ifilter_set(0, 1, 5, 0x80000000), result);
    EXPECT_EQ(swprobe::take().back().in("enable"), 1);
  }
}

TEST_F(Flood, LeadingArgumentIsIgnored) {
  for (uint32_t lead : {1u, 0xFFFFFFFFu}) {
    user_pbmp_t ports = {{6, 0, 0, 0, 0, 0, 0, 0}};
    EXPECT_EQ(user_port_egress_set(lead, 1, 5, 0, ports), 0);
    EXPECT_EQ(user_port_egress_get(lead, 1, 5, 0, &ports), 0);
    EXPECT_EQ(user_ulf_flood_ports_set(lead, 1, ports), 0);
    EXPECT_EQ(user_ulf_flood_ports_get(lead, 1, &ports), 0);
    expect_words(ports, 6);
    EXPECT_EQ(user_ulf_flood_port_add_remove(lead, 1, 3, 1), 0);
    EXPECT_EQ(flooded(), 14u);
    EXPECT_EQ(user_port_ifilter_set(lead, 1, 5, 1), 0);
  }
}

}  // namespace
