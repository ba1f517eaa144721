// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/mirror_trunk.h>

#include <cstring>
#include <initializer_list>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using Trunk = swctl_test::LibraryTest;

constexpr const char *kTrunkSet = "rtk_trunk_port_set";

user_trunk_desc_t description(int32_t count, std::initializer_list<int> ports) {
  user_trunk_desc_t made;
  memset(&made, 0xEE, sizeof made);
  made.count = count;
  size_t index = 0;
  for (const int port : ports) made.ports[index++] = static_cast<uint8_t>(port);
  return made;
}

TEST_F(Trunk, MembersAreTheFirstPorts) {
  EXPECT_EQ(user_trunk_set(9, 1, 4, description(3, {1, 2, 3, 7})), 0);
  EXPECT_CALLS("rtk_trunk_port_set(unit=0, trunk=4, members=0xe) = 0");
  EXPECT_EQ(vchip::trunks(0).members[4], 14u);
  EXPECT_EQ(vchip::trunks(1).members[4], 0u);
}

TEST_F(Trunk, MembersReplaceTheOldOnes) {
  ASSERT_EQ(user_trunk_set(0, 0, 4, description(2, {1, 2})), 0);
  EXPECT_EQ(user_trunk_set(0, 0, 4, description(2, {26, 0})), 0);
  EXPECT_EQ(vchip::trunks(0).members[4], 0x04000001u);
}

TEST_F(Trunk, NoPortsEmptyIt) {
  for (const int32_t count : {0, -1, INT32_MIN}) {
    ASSERT_EQ(user_trunk_set(0, 0, 4, description(1, {5})), 0);
    swprobe::forget();
    EXPECT_EQ(user_trunk_set(0, 0, 4, description(count, {1, 2})), 0);
    EXPECT_CALLS("rtk_trunk_port_set(unit=0, trunk=4, members=0x0) = 0");
    EXPECT_EQ(vchip::trunks(0).members[4], 0u);
  }
}

TEST_F(Trunk, PortsCountModulo32) {
  chip_answers(kTrunkSet, 0);
  swprobe::forget();
  EXPECT_EQ(user_trunk_set(0, 0, 4, description(4, {31, 32, 255, 63})), 0);
  EXPECT_EQ(swprobe::take()[0].in("members"), 0x80000001);
}

TEST_F(Trunk, APortTwiceIsAPortOnce) {
  EXPECT_EQ(user_trunk_set(0, 0, 4, description(3, {5, 5, 5})), 0);
  EXPECT_EQ(vchip::trunks(0).members[4], 0x20u);
}

TEST_F(Trunk, AFullDescriptionAndMore) {
  user_trunk_desc_t full = description(USER_TRUNK_PORTS, {});
  memset(full.ports, 1, sizeof full.ports);
  full.ports[USER_TRUNK_PORTS - 1] = 9;
  for (const int32_t count : {USER_TRUNK_PORTS, USER_TRUNK_PORTS + 1, INT32_MAX}) {
    full.count = count;
    EXPECT_EQ(user_trunk_set(0, 0, 4, full), 0);
    EXPECT_EQ(vchip::trunks(0).members[4], 0x202u);
  }
}

TEST_F(Trunk, DestroyTakesEveryMemberOut) {
  ASSERT_EQ(user_trunk_set(0, 0, 4, description(2, {1, 2})), 0);
  swprobe::forget();
  EXPECT_EQ(user_trunk_destroy(9, 1, 4), 0);
  EXPECT_CALLS("rtk_trunk_port_set(unit=0, trunk=4, members=0x0) = 0");
  EXPECT_EQ(vchip::trunks(0).members[4], 0u);
}

TEST_F(Trunk, ResultsAndNumbersPassThrough) {
  for (const int64_t result : {4, -1, INT32_MIN}) {
    chip_answers(kTrunkSet, result);
    swprobe::forget();
    EXPECT_EQ(user_trunk_set(0, 0, 0x80000000, description(0, {})), result);
    EXPECT_EQ(user_trunk_destroy(0, 0, UINT32_MAX), result);
    const auto calls = swprobe::take();
    EXPECT_EQ(calls[0].in("trunk"), 0x80000000);
    EXPECT_EQ(calls[1].in("trunk"), UINT32_MAX);
  }
}

struct Hash {
  uint32_t selector;
  uint32_t fields;
};
constexpr Hash kHashes[] = {
    {USER_TRUNK_HASH_SOURCE_MAC, 2},
    {USER_TRUNK_HASH_DESTINATION_MAC, 4},
    {USER_TRUNK_HASH_MACS, 6},
    {USER_TRUNK_HASH_SOURCE_IP, 8},
    {USER_TRUNK_HASH_DESTINATION_IP, 16},
    {USER_TRUNK_HASH_IPS, 24},
    {USER_TRUNK_HASH_NONE, 0},
    {7, 0},
    {9, 0},
    {0x80000001, 0},
    {UINT32_MAX, 0},
};

TEST_F(Trunk, SelectorsBecomeHashFields) {
  for (const Hash &hash : kHashes) {
    EXPECT_EQ(user_trunk_loadbalance_set(9, 1, 5, hash.selector), 0);
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].name, "rtk_trunk_distributionAlgorithmParam_set");
    EXPECT_EQ(calls[0].in("unit"), 0);
    EXPECT_EQ(calls[0].in("algorithm"), 0);
    EXPECT_EQ(calls[0].in("fields"), hash.fields);
    EXPECT_EQ(vchip::trunks(0).hash_fields, (std::vector<uint32_t>{hash.fields, 1}));
    EXPECT_EQ(vchip::trunks(1).hash_fields, (std::vector<uint32_t>{1, 1}));
  }
}

TEST_F(Trunk, LoadBalanceAnswersTheSdk) {
  for (const int64_t result : {4, -1, INT32_MIN}) {
    chip_answers("rtk_trunk_distributionAlgorithmParam_set", result);
    EXPECT_EQ(user_trunk_loadbalance_set(0, 0, 0, 1), result);
  }
}

TEST_F(Trunk, PrintsNothing) {
  chip_answers(kTrunkSet, -1);
  const auto all = [] {
    user_trunk_set(0, 0, 99, description(1, {1}));
    user_trunk_destroy(0, 0, 99);
    user_trunk_loadbalance_set(0, 0, 0, 99);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
