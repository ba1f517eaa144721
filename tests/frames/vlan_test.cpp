// SPDX-License-Identifier: MIT
// Which VLAN a frame is in, and whether it may come in.
#include "rule_maker.h"

namespace {

using frames::BoardRule;
using frames::Bytes;
using frames::kBroadcast;
using frames::Maker;
using frames::mask;
using frames::plain;
using frames::station;

// Each VLAN from 20 to 26 has one port as its only member but port 1: 2 to 8.
class Vlan : public frames::Switch {
 protected:
  void SetUp() override {
    Switch::SetUp();
    for (uint32_t vid = 20; vid <= 26; ++vid) make_vlan(vid, mask({1, static_cast<int>(vid) - 18}));
  }
  static constexpr uint32_t at(uint32_t vid) { return uint32_t{1} << (vid - 18); }
  static Bytes tagged(uint32_t vid, uint32_t priority = 0) {
    return Maker(kBroadcast, station(1)).tag(vid, priority).type(0x88b5).bytes();
  }
  static Bytes untagged() { return plain(kBroadcast, station(1)); }
  static Bytes ip(uint32_t from) {
    return Maker(kBroadcast, station(1)).type(0x0800).ip4(17, from, 0x0a000002, 20).bytes();
  }
};

TEST_F(Vlan, IsThatOfTheTagOrTheDefault) {
  ASSERT_EQ(rtk_vlan_portPvid_set(0, 1, 20), 0);
  EXPECT_EQ(out(1, untagged()), at(20));
  EXPECT_EQ(out(1, tagged(21)), at(21));
  EXPECT_EQ(out(1, tagged(0, 5)), at(20)) << "a priority tag has no VLAN";
  EXPECT_EQ(drops(1).vlan, 0u);
}

TEST_F(Vlan, OtherTypesAreNoTags) {
  ASSERT_EQ(rtk_vlan_portPvid_set(0, 1, 20), 0);
  const Bytes provider = Maker(kBroadcast, station(1)).tag(21, 0, 0x88a8).type(0x88b5).bytes();
  EXPECT_EQ(out(1, provider), at(20)) << "payload";
  ASSERT_EQ(rtk_vlan_innerTpidEntry_set(0, 2, 0x9100), 0);
  const Bytes other = Maker(kBroadcast, station(1)).tag(21, 0, 0x9100).type(0x88b5).bytes();
  EXPECT_EQ(out(1, other), at(20));
  ASSERT_EQ(rtk_vlan_portIgrInnerTpid_set(0, 1, 5), 0);
  EXPECT_EQ(out(1, other), at(21));
}

TEST_F(Vlan, WhatFollowsTheFirstTagIsPayload) {
  const Bytes two = Maker(kBroadcast, station(1)).tag(20).tag(21).type(0x88b5).bytes();
  EXPECT_EQ(through(1, two, 2), two);
}

TEST_F(Vlan, Id4095IsDroppedBeforeAnyRule) {
  BoardRule(ADP_FP_ENTITY_VOICE_VLAN, 0).vlan(20).add();
  EXPECT_EQ(out(1, tagged(4095)), 0u);
  EXPECT_EQ(drops(1).vlan, 1u);
  EXPECT_FALSE(is_known(station(1), 4095));
  EXPECT_FALSE(is_known(station(1), 20));
  EXPECT_EQ(out(1, tagged(22)), at(20));
}

TEST_F(Vlan, OfARuleIsByKindThenByIndex) {
  constexpr uint32_t kKinds[] = {ADP_FP_ENTITY_TRANSLATION, ADP_FP_ENTITY_VOICE_VLAN,
                                 ADP_FP_ENTITY_MAC_VLAN, ADP_FP_ENTITY_IP4_VLAN,
                                 ADP_FP_ENTITY_PROTOCOL_VLAN};
  for (uint32_t kind = 5; kind-- > 0;) {
    BoardRule(kKinds[kind], 7).vlan(26).add();
    BoardRule(kKinds[kind], 3).vlan(20 + kind).add();
  }
  for (uint32_t kind = 0; kind < 5; ++kind) {
    EXPECT_EQ(out(1, tagged(25)), at(20 + kind)) << "before the tag";
    BoardRule(kKinds[kind], 3).remove();
    EXPECT_EQ(out(1, untagged()), at(26));
    BoardRule(kKinds[kind], 7).remove();
  }
  EXPECT_EQ(out(1, tagged(25)), at(25));
}

TEST_F(Vlan, OfARuleWithoutOneIsThatOfTheTag) {
  BoardRule(ADP_FP_ENTITY_MAC_VLAN, 0).priority(5).add();
  BoardRule(ADP_FP_ENTITY_IP4_VLAN, 0).vlan(20).add();
  EXPECT_EQ(out(1, tagged(21)), at(21)) << "the first rule that matches decides alone";
}

TEST_F(Vlan, RulesLookAtTheStateOfTheTag) {
  BoardRule tagged_rule(ADP_FP_ENTITY_MAC_VLAN, 0);
  tagged_rule.half(ADP_FP_QUALIFIER_TAG_STATE, ADP_FP_TAG_STATE_TAGGED).vlan(20).add();
  BoardRule untagged_rule(ADP_FP_ENTITY_MAC_VLAN, 1);
  untagged_rule.half(ADP_FP_QUALIFIER_TAG_STATE, ADP_FP_TAG_STATE_UNTAGGED).vlan(21).add();
  EXPECT_EQ(out(1, tagged(25)), at(20));
  EXPECT_EQ(out(1, untagged()), at(21));
  EXPECT_EQ(out(1, tagged(0, 3)), at(21)) << "priority-tagged";
}

TEST_F(Vlan, RulesLookAtTheVlanReceived) {
  BoardRule(ADP_FP_ENTITY_TRANSLATION, 0).half(ADP_FP_QUALIFIER_RECEIVED_VLAN, 25).vlan(20).add();
  EXPECT_EQ(out(1, tagged(25)), at(20));
  EXPECT_EQ(out(1, tagged(24)), at(24));
  ASSERT_EQ(rtk_vlan_portPvid_set(0, 1, 25), 0);
  EXPECT_EQ(out(1, untagged()), at(25)) << "no VLAN was received";
}

TEST_F(Vlan, RulesLookAtPortAndSource) {
  BoardRule(ADP_FP_ENTITY_MAC_VLAN, 0)
      .bytes(ADP_FP_QUALIFIER_SOURCE_MAC, {2, 0, 0, 0, 0, 1})
      .from(1u << 2)  // interface 2 is chip port 1
      .vlan(20)
      .add();
  EXPECT_EQ(out(1, tagged(25)), at(20));
  EXPECT_EQ(out(1, Maker(kBroadcast, station(9)).tag(25).type(0x88b5).bytes()), at(25));
  EXPECT_EQ(out(7, tagged(25)), mask({1})) << "another port";
}

TEST_F(Vlan, RulesOfIp4DoNotLookAtArp) {
  BoardRule(ADP_FP_ENTITY_IP4_VLAN, 0)
      .masked(ADP_FP_QUALIFIER_SOURCE_IP4, 0x0a010000, 0xffff0000)
      .vlan(20)
      .add();
  ASSERT_EQ(rtk_vlan_portPvid_set(0, 1, 25), 0);
  EXPECT_EQ(out(1, ip(0x0a010203)), at(20));
  EXPECT_EQ(out(1, ip(0x0a020203)), at(25));
  const Bytes arp = Maker(kBroadcast, station(1))
                        .type(0x0806)
                        .word(0x00010800)
                        .half(0x0604)
                        .half(1)
                        .word(0x02000000)
                        .half(1)
                        .word(0x0a010203)
                        .bytes();
  EXPECT_EQ(out(1, arp), at(25));
}

TEST_F(Vlan, RulesOfProtocolsLookBehindTheLength) {
  const auto rule = [](uint32_t index, uint32_t encapsulation, uint32_t type, uint32_t vid) {
    BoardRule(ADP_FP_ENTITY_PROTOCOL_VLAN, index)
        .number(ADP_FP_QUALIFIER_ENCAPSULATION, encapsulation)
        .half(ADP_FP_QUALIFIER_ETHERTYPE, type)
        .vlan(vid)
        .add();
  };
  rule(0, ADP_FP_ENCAPSULATION_ETHERNET, 0x86dd, 20);
  rule(1, ADP_FP_ENCAPSULATION_SNAP, 0x809b, 21);
  rule(2, ADP_FP_ENCAPSULATION_LLC, 0xe0e0, 22);
  ASSERT_EQ(rtk_vlan_portPvid_set(0, 1, 25), 0);
  const Maker to(kBroadcast, station(1));
  EXPECT_EQ(out(1, Maker(to).type(0x86dd).bytes()), at(20));
  EXPECT_EQ(out(1, Maker(to).half(46).word(0xaaaa0300).half(0).half(0x809b).bytes()), at(21));
  EXPECT_EQ(out(1, Maker(to).half(46).half(0xe0e0).byte(3).bytes()), at(22));
  EXPECT_EQ(out(1, Maker(to).type(0x809b).bytes()), at(25)) << "another encapsulation";
  EXPECT_EQ(out(1, Maker(to).half(46).word(0xaaaa0300).half(0x00f8).half(0x809b).bytes()), at(25))
      << "of another organisation";
}

TEST_F(Vlan, RulesAreTheBoards) {
  BoardRule(ADP_FP_ENTITY_MAC_VLAN, 0).vlan(20).add();
  ASSERT_EQ(rtk_vlan_create(1, 20), 0);
  const uint32_t members = mask({1, 9});
  ASSERT_EQ(rtk_vlan_port_set(1, 20, &members, &members), 0);
  const vchip_partner_t partner = {1, VCHIP_ABILITY_USUAL};
  for (const int32_t port : {1, 9}) ASSERT_EQ(vchip_cable_plug(1, port, &partner), 0);
  const Bytes frame = untagged();
  ASSERT_EQ(vchip_frame_arrive(1, 1, frame.data(), 60), 0);
  EXPECT_EQ(vchip_frames_ready(1), mask({9}));
  EXPECT_EQ(vchip_frames_ready(0), 0u) << "units never meet";
}

TEST_F(Vlan, RulesHoldForTheProcessorToo) {
  set_vlan(20, mask({2, kCpu}));
  BoardRule(ADP_FP_ENTITY_MAC_VLAN, 0).from(1).vlan(20).add();  // interface 0 is the processor
  EXPECT_EQ(out(kCpu, untagged()), at(20));
}

TEST_F(Vlan, ThatDoesNotExistIsDroppedWhateverTheFilter) {
  for (const uint32_t filter : {0u, 1u}) {
    ASSERT_EQ(rtk_vlan_portIgrFilter_set(0, 1, filter), 0);
    EXPECT_EQ(out(1, tagged(99)), 0u);
  }
  EXPECT_EQ(drops(1).filter, 2u);
  EXPECT_FALSE(is_known(station(1), 99));
}

TEST_F(Vlan, WithoutTheFilterAnyPortMayEnter) {
  EXPECT_EQ(out(9, tagged(20)), mask({1, 2}));
  ASSERT_EQ(rtk_vlan_portIgrFilter_set(0, 9, 1), 0);
  const Bytes frame = Maker(kBroadcast, station(7)).tag(20).type(0x88b5).bytes();
  EXPECT_EQ(out(9, frame), 0u);
  EXPECT_EQ(drops(9).filter, 1u);
  EXPECT_FALSE(is_known(station(7), 20)) << "what is dropped here is not learned";
}

}  // namespace
