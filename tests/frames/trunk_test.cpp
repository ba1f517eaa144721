// SPDX-License-Identifier: MIT
// Trunks: one port for learning and flooding, and one member that sends.
#include <swctl/platform/sdk.h>

#include <bit>

#include "rule_maker.h"

namespace {

using frames::Bytes;
using frames::kBroadcast;
using frames::Maker;
using frames::mask;
using frames::plain;
using frames::station;

// Ports 4, 5 and 6 are trunk 3.
class Trunk : public frames::Switch {
 protected:
  static constexpr uint32_t kTrunk = 3;
  static constexpr uint32_t kMembers = mask({4, 5, 6});

  void SetUp() override {
    Switch::SetUp();
    set_vlan(1, mask({1, 2}) | kMembers, mask({1, 2}) | kMembers);
    set_trunk(kTrunk, kMembers);
    hash(2);  // by the source MAC
  }
  static void hash(uint32_t fields) {
    ASSERT_EQ(rtk_trunk_distributionAlgorithmParam_set(0, 0, fields), 0);
  }
  static Bytes from(uint32_t number) { return plain(kBroadcast, station(number)); }
  // Members that 64 frames leave by, made by a number.
  static uint32_t members_of(Bytes (*make)(uint32_t)) {
    uint32_t members = 0;
    for (uint32_t number = 0; number < 64; ++number) {
      const uint32_t one = out(1, make(number)) & kMembers;
      EXPECT_EQ(std::popcount(one), 1);
      EXPECT_EQ(out(1, make(number)) & kMembers, one) << "the same for the same frame";
      members |= one;
    }
    return members;
  }
  static Bytes ip(uint32_t from, uint32_t to, uint32_t source, uint32_t destination) {
    return Maker(kBroadcast, station(1))
        .type(0x0800)
        .ip4(17, from, to, 20)
        .half(source)
        .half(destination)
        .bytes();
  }
  static Bytes ip6(uint32_t from, uint32_t to) {
    Maker maker(kBroadcast, station(1));
    maker.type(0x86dd).word(0x60000000).half(0).byte(59).byte(1);
    for (const uint32_t last : {from, to})
      for (uint32_t at = 0; at < 16; ++at) maker.byte(at == 0 ? 0xfe : at == 15 ? last : 0);
    return maker.bytes();
  }
};

TEST_F(Trunk, OneMemberSends) {
  EXPECT_EQ(members_of(from), kMembers) << "and each its share";
}

TEST_F(Trunk, HashesTheFieldsThatAreSet) {
  struct Field {
    uint32_t bit;
    Bytes (*make)(uint32_t number);
  };
  const Field fields[] = {
      {0x02, [](uint32_t number) { return plain(kBroadcast, station(number)); }},
      {0x04, [](uint32_t number) { return plain(0x010000000000 + number, station(1)); }},
      {0x08, [](uint32_t number) { return ip(number, 9, 9, 9); }},
      {0x10, [](uint32_t number) { return ip(9, number, 9, 9); }},
      {0x08, [](uint32_t number) { return ip6(number, 9); }},
      {0x10, [](uint32_t number) { return ip6(9, number); }},
      {0x20, [](uint32_t number) { return ip(9, 9, number, 9); }},
      {0x40, [](uint32_t number) { return ip(9, 9, 9, number); }},
  };
  for (const Field &field : fields) {
    hash(field.bit);
    EXPECT_EQ(members_of(field.make), kMembers) << field.bit;
    hash(0x7f & ~field.bit);
    EXPECT_EQ(std::popcount(members_of(field.make)), 1) << field.bit << ", which does not count";
  }
}

TEST_F(Trunk, HashesTheSourcePort) {
  set_vlan(1, mask({0, 1, 2, 3}) | mask({10, 11, 12, 13, 14, 15, 16, 17}) | kMembers, 0);
  hash(1);
  uint32_t members = 0;
  for (const int32_t port : {0, 1, 2, 3, 10, 11, 12, 13, 14, 15, 16, 17})
    members |= out(port, from(1)) & kMembers;
  EXPECT_GT(std::popcount(members), 1);
  EXPECT_EQ(std::popcount(members_of(from)), 1);
}

TEST_F(Trunk, FieldsThatAreNotThereCountAsZero) {
  hash(0x78);
  EXPECT_EQ(std::popcount(members_of(from)), 1);
}

TEST_F(Trunk, NoSecondAlgorithmIsChosen) {
  hash(0);
  ASSERT_EQ(rtk_trunk_distributionAlgorithmParam_set(0, 1, 2), 0);
  EXPECT_EQ(std::popcount(members_of(from)), 1);
}

TEST_F(Trunk, SendsNothingBackToItsMembers) {
  for (const int32_t port : {4, 5, 6}) EXPECT_EQ(out(port, from(1)), mask({1, 2}));
}

TEST_F(Trunk, IsOnePlaceForLearning) {
  arrive(4, from(9));
  EXPECT_EQ(entry_of(station(9)).trunk, int32_t{kTrunk});
  const int32_t port = entry_of(station(9)).port;
  arrive(5, from(9));
  EXPECT_EQ(entry_of(station(9)).port, port) << "it has not moved";
  left();
  const uint32_t one = out(1, plain(station(9), station(1)));
  EXPECT_EQ(std::popcount(one), 1);
  EXPECT_NE(one & kMembers, 0u);
  EXPECT_EQ(out(6, plain(station(9), station(8))), 0u) << "at home in the trunk";
}

TEST_F(Trunk, MembersWithoutLinkAreLeftOut) {
  ASSERT_EQ(vchip_cable_pull(0, 5), 0);
  EXPECT_EQ(members_of(from), mask({4, 6}));
  ASSERT_EQ(rtk_port_adminEnable_set(0, 4, 0), 0);
  EXPECT_EQ(members_of(from), mask({6}));
  ASSERT_EQ(rtk_stp_mstpState_set(0, 0, 6, 1), 0);
  EXPECT_EQ(out(1, from(1)), mask({2})) << "the state is each member's own";
}

TEST_F(Trunk, AMaskThatNamesAMemberNamesAll) {
  join(0x010000000009, mask({5}));
  EXPECT_EQ(members_of([](uint32_t number) { return plain(0x010000000009, station(number)); }),
            kMembers);
  ASSERT_EQ(rtk_port_isolation_set(0, 1, mask({6})), 0);
  EXPECT_EQ(members_of(from), kMembers);
  const uint32_t flood = mask({4});
  ASSERT_EQ(rtk_l2_lookupMissFloodPortMask_set_with_idx(0, 4, 2, &flood), 0);
  ASSERT_EQ(rtk_l2_lookupMissFloodPortMaskIdx_set(0, 4, 2), 0);
  EXPECT_EQ(members_of(from), kMembers);
}

TEST_F(Trunk, AVlanThatNamesAMemberNamesAll) {
  make_vlan(20, mask({1, 5, 6}), mask({6}));
  ASSERT_EQ(rtk_vlan_portPvid_set(0, 1, 20), 0);
  EXPECT_EQ(members_of(from), kMembers);
  for (uint32_t number = 0; number < 32; ++number) {
    arrive(1, from(number));
    for (const int32_t port : {4, 5, 6})
      for (const frames::Left &sent : taken(port))
        EXPECT_EQ(sent.bytes.size(), 64u) << "tagged as port 5, the lowest that is named";
  }
  set_vlan(20, mask({1, 5, 6}), mask({5}));
  for (uint32_t number = 0; number < 32; ++number) {
    arrive(1, from(number));
    for (const int32_t port : {4, 5, 6})
      for (const frames::Left &sent : taken(port)) EXPECT_EQ(sent.bytes.size(), 60u);
  }
}

TEST_F(Trunk, ARuleSendsToAMemberOfTheTrunksVlans) {
  make_vlan(20, mask({1, 5}));
  frames::Rule(5).from(mask({1})).redirect(6).enable();
  const Bytes tagged = Maker(kBroadcast, station(1)).tag(20, 3).type(0x88b5).bytes();
  EXPECT_EQ(through(1, tagged, 6), tagged);
  set_vlan(20, mask({1, 5}), mask({5}));
  EXPECT_EQ(through(1, tagged, 6), plain(kBroadcast, station(1))) << "untagged as port 5";
}

TEST_F(Trunk, AVlanThatNamesAllTagsEachAsItSays) {
  make_vlan(20, mask({1}) | kMembers, mask({4, 6}));
  ASSERT_EQ(rtk_vlan_portPvid_set(0, 1, 20), 0);
  uint32_t seen = 0;
  for (uint32_t number = 0; number < 32; ++number) {
    arrive(1, from(number));
    for (const int32_t port : {4, 5, 6})
      for (const frames::Left &sent : taken(port)) {
        EXPECT_EQ(sent.bytes.size(), port == 5 ? 64u : 60u);
        seen |= uint32_t{1} << port;
      }
  }
  EXPECT_EQ(seen, kMembers);
}

TEST_F(Trunk, TheIngressFilterLetsAllMembersPass) {
  make_vlan(20, mask({1, 5}));
  for (const int32_t port : {4, 5, 6}) {
    ASSERT_EQ(rtk_vlan_portIgrFilter_set(0, port, 1), 0);
    EXPECT_EQ(out(port, Maker(kBroadcast, station(9)).tag(20).type(0x88b5).bytes()), mask({1}));
  }
}

TEST_F(Trunk, AnEntryOfATrunkIsAtItsMembers) {
  bind(station(9), 1, 8, kTrunk);
  EXPECT_EQ(members_of([](uint32_t number) { return plain(station(9), station(100 + number)); }),
            kMembers);
  bind(station(9), 1, 8, 7);
  EXPECT_EQ(out(2, plain(station(9), station(1))), 0u) << "trunk 7 has no member";
}

TEST_F(Trunk, TrunkZeroSharesFramesButLearnsPorts) {
  set_trunk(kTrunk, 0);
  set_trunk(0, kMembers);
  EXPECT_EQ(members_of(from), kMembers);
  EXPECT_EQ(out(4, from(9)), mask({1, 2}));
  EXPECT_EQ(entry_of(station(9)).trunk, 0);
  EXPECT_EQ(entry_of(station(9)).port, 4);
  arrive(5, from(9));
  EXPECT_EQ(entry_of(station(9)).port, 5) << "it moves";
}

}  // namespace
