// SPDX-License-Identifier: MIT
// The access-control list: what rules match and what they do.
#include "rule_maker.h"

namespace {

using frames::Bytes;
using frames::kBroadcast;
using frames::kSecond;
using frames::Left;
using frames::Maker;
using frames::mask;
using frames::plain;
using frames::Rule;
using frames::station;

// Ports 1 to 4 are in VLAN 1.
class Acl : public frames::Switch {
 protected:
  static constexpr uint32_t kMembers = mask({1, 2, 3, 4});

  void SetUp() override {
    Switch::SetUp();
    set_vlan(1, kMembers, kMembers);
    ASSERT_EQ(rtk_trap_mgmtFrameAction_set(0, 5, 0), 0);  // IGMP is forwarded
  }
  // Whether the rule drops a frame that comes in by port 1.
  static bool drops_it(const Bytes &frame) {
    const uint64_t before = drops(1).rule;
    arrive(1, frame);
    left();
    return drops(1).rule != before;
  }
  static Maker to_all() { return Maker(kBroadcast, station(1)); }
  static Bytes untagged() { return plain(kBroadcast, station(1)); }
  static Bytes tagged(uint32_t vid, uint32_t priority = 0) {
    return to_all().tag(vid, priority).type(0x88b5).bytes();
  }
  static Bytes ports4(uint32_t protocol, uint32_t from, uint32_t to, uint32_t fragment = 0) {
    return to_all()
        .type(0x0800)
        .ip4(protocol, 0x0a010203, 0xc0a80001, 20, 46 << 2, fragment)
        .half(from)
        .half(to)
        .bytes();
  }
  // An IPv6 header, and what follows it.
  static Bytes ip6(uint32_t next, const Bytes &following) {
    Maker maker = to_all();
    maker.type(0x86dd).word(0x6b800000).half(static_cast<uint32_t>(following.size()));
    maker.byte(next).byte(64);
    for (uint32_t at = 0; at < 16; ++at) maker.byte(at + 1);
    for (uint32_t at = 0; at < 16; ++at) maker.byte(at + 0x21);
    for (const uint8_t byte : following) maker.byte(byte);
    return maker.bytes();
  }
  static Bytes count_of(uint8_t first) {
    Bytes bytes(16);
    for (uint8_t at = 0; at < 16; ++at) bytes[at] = static_cast<uint8_t>(first + at);
    return bytes;
  }
  static uint64_t packets(uint32_t counter) {
    uint32_t words[2] = {};
    EXPECT_EQ(rtk_acl_statPktCnt_get(0, counter, words), 0);
    return uint64_t{words[0]} << 32 | words[1];
  }
  static uint64_t octets(uint32_t counter) {
    uint32_t words[2] = {};
    EXPECT_EQ(rtk_acl_statByteCnt_get(0, counter, words), 0);
    return uint64_t{words[0]} << 32 | words[1];
  }
};

TEST_F(Acl, MatchesPorts) {
  Rule(5).from(mask({1, 3})).drop().enable();
  EXPECT_EQ(out(1, untagged()), 0u);
  EXPECT_EQ(out(2, untagged()), mask({1, 3, 4}));
  EXPECT_EQ(out(3, untagged()), 0u);
}

TEST_F(Acl, MatchesAddresses) {
  Rule(5).match(CHIP_ACL_FIELD_DST_MAC, {2, 0, 0, 0, 0, 5}).drop().enable();
  EXPECT_TRUE(drops_it(plain(station(5), station(1))));
  EXPECT_FALSE(drops_it(plain(station(4), station(1))));
  Rule(6)
      .match(CHIP_ACL_FIELD_SRC_MAC, {2, 0, 0, 0, 0x77, 0}, {0xff, 0, 0, 0, 0xff, 0})
      .drop()
      .enable();
  EXPECT_TRUE(drops_it(plain(kBroadcast, station(0x7712))));
  EXPECT_FALSE(drops_it(plain(kBroadcast, station(0x7812))));
}

TEST_F(Acl, MatchesTagsOfAnOrdinaryPort) {
  for (const uint32_t vid : {0x101u, 0x302u}) make_vlan(vid, kMembers);
  Rule(5).match(CHIP_ACL_FIELD_INNER_VLAN_ID, 0x101).drop().enable();
  EXPECT_TRUE(drops_it(tagged(0x101)));
  EXPECT_FALSE(drops_it(tagged(1)));
  EXPECT_FALSE(drops_it(untagged())) << "a field that it does not have";
  Rule(6).match(CHIP_ACL_FIELD_INNER_VLAN, 0x02).drop().enable();
  EXPECT_TRUE(drops_it(tagged(0x302))) << "the low byte";
  Rule(7).match(CHIP_ACL_FIELD_INNER_PRIORITY, 6).drop().enable();
  EXPECT_TRUE(drops_it(tagged(1, 6)));
  EXPECT_TRUE(drops_it(tagged(0, 6))) << "of a priority tag";
  EXPECT_FALSE(drops_it(tagged(1, 5)));
  Rule(8).match(CHIP_ACL_FIELD_OUTER_VLAN_ID, 1).drop().enable();
  EXPECT_FALSE(drops_it(tagged(1))) << "an ordinary port has no outer tag";
}

TEST_F(Acl, MatchesTagsInDoubleTagMode) {
  make_vlan(0x123, kMembers);
  ASSERT_EQ(rtk_l2_vlanMode_set(0, 1, 1), 0);
  const Bytes both = to_all().tag(0x123, 5, 0x88a8, true).tag(0x456, 3).type(0x88b5).bytes();
  const Bytes outer = to_all().tag(0x123, 5, 0x88a8).type(0x88b5).bytes();
  const Bytes inner = to_all().tag(0x456, 3).type(0x88b5).bytes();
  for (const uint32_t keep : {0u, 1u}) {
    ASSERT_EQ(rtk_vlan_portIgrTagKeepEnable_set(0, 1, keep, keep), 0);
    const auto catches = [&](uint32_t field, uint32_t value, bool of_outer) {
      Rule(5).match(field, value).drop().enable();
      EXPECT_TRUE(drops_it(both)) << field << ", as received, kept or not";
      EXPECT_EQ(drops_it(outer), of_outer) << field;
      EXPECT_EQ(drops_it(inner), !of_outer) << field;
      const chip_acl_range range = {5, 5};
      ASSERT_EQ(rtk_acl_rule_del(0, 0, &range), 0);
    };
    catches(CHIP_ACL_FIELD_OUTER_VLAN_ID, 0x123, true);
    catches(CHIP_ACL_FIELD_OUTER_PRIORITY, 5, true);
    catches(CHIP_ACL_FIELD_INNER_VLAN_ID, 0x456, false);
    catches(CHIP_ACL_FIELD_INNER_VLAN, 0x56, false);
    catches(CHIP_ACL_FIELD_INNER_PRIORITY, 3, false);
    Rule(5).match(CHIP_ACL_FIELD_OUTER_VLAN, 0xb123).drop().enable();
    EXPECT_TRUE(drops_it(both)) << "priority, DEI and VLAN ID";
    EXPECT_FALSE(drops_it(outer));
    const chip_acl_range range = {5, 5};
    ASSERT_EQ(rtk_acl_rule_del(0, 0, &range), 0);
  }
}

TEST_F(Acl, MatchesTheTypeBehindTheTags) {
  Rule(5).match(CHIP_ACL_FIELD_ETHER_TYPE, 0x88b5).drop().enable();
  EXPECT_TRUE(drops_it(untagged()));
  EXPECT_TRUE(drops_it(tagged(1)));
  EXPECT_FALSE(drops_it(to_all().tag(1).tag(2).type(0x88b5).bytes())) << "0x8100";
  Rule(6).match(CHIP_ACL_FIELD_ETHER_TYPE, 46).drop().enable();
  EXPECT_FALSE(drops_it(to_all().half(46).bytes())) << "a length is no type";
  Rule(7).match(CHIP_ACL_FIELD_ETHER_TYPE, 0x8100).drop().enable();
  EXPECT_TRUE(drops_it(to_all().tag(1).tag(2).type(0x88b5).bytes()));
}

TEST_F(Acl, MatchesTheFormOfTheFrame) {
  const Bytes frames[] = {untagged(), to_all().half(46).word(0xaaaa0300).bytes(),
                          to_all().half(46).half(0x4242).byte(3).bytes()};
  for (uint32_t type = 0; type < 3; ++type) {
    Rule(5).match(CHIP_ACL_FIELD_FRAME_TYPE, type).drop().enable();
    for (uint32_t each = 0; each < 3; ++each) EXPECT_EQ(drops_it(frames[each]), each == type);
  }
}

TEST_F(Acl, MatchesTheVersionOfIp) {
  const Bytes frames[] = {untagged(), ports4(17, 1, 2), ip6(17, {0, 1, 0, 2})};
  constexpr uint32_t kTypes[] = {0, 2, 3};
  for (uint32_t type = 0; type < 16; ++type) {
    Rule(5).match(CHIP_ACL_FIELD_IP_TYPE, type).drop().enable();
    for (uint32_t each = 0; each < 3; ++each)
      EXPECT_EQ(drops_it(frames[each]), type == kTypes[each]) << type;
  }
}

TEST_F(Acl, MatchesIp4) {
  Rule(5).match(CHIP_ACL_FIELD_SRC_IP, 0x0a010000, 0xffff0000).drop().enable();
  EXPECT_TRUE(drops_it(ports4(17, 1, 2)));
  EXPECT_FALSE(drops_it(ip6(17, {0, 1, 0, 2})));
  Rule(5).match(CHIP_ACL_FIELD_SRC_IP, 0x0a020000, 0xffff0000).drop().enable();
  EXPECT_FALSE(drops_it(ports4(17, 1, 2)));
  Rule(6).match(CHIP_ACL_FIELD_DST_IP, 0xc0a80001).drop().enable();
  EXPECT_TRUE(drops_it(ports4(17, 1, 2)));
  Rule(6).match(CHIP_ACL_FIELD_DST_IP, 0xc0a80002).drop().enable();
  EXPECT_FALSE(drops_it(ports4(17, 1, 2)));
}

TEST_F(Acl, MatchesIp6) {
  const Bytes frame = ip6(59, {});
  Rule(5).match(CHIP_ACL_FIELD_SRC_IP6, count_of(1)).drop().enable();
  EXPECT_TRUE(drops_it(frame));
  Rule(5).match(CHIP_ACL_FIELD_SRC_IP6, count_of(2)).drop().enable();
  EXPECT_FALSE(drops_it(frame));
  Rule(6).match(CHIP_ACL_FIELD_DST_IP6, count_of(0x21)).drop().enable();
  EXPECT_TRUE(drops_it(frame));
  EXPECT_FALSE(drops_it(ports4(17, 1, 2)));
}

TEST_F(Acl, MatchesTheTrafficClass) {
  Rule(5).match(CHIP_ACL_FIELD_TRAFFIC_CLASS, 46 << 2, 0xfc).drop().enable();
  EXPECT_TRUE(drops_it(ports4(17, 1, 2)));
  EXPECT_TRUE(drops_it(ip6(59, {}))) << "0xb8 of IPv6";
  EXPECT_FALSE(drops_it(untagged()));
}

TEST_F(Acl, MatchesTheProtocolByNumberOrClass) {
  Rule(5).match(CHIP_ACL_FIELD_IP_PROTOCOL, 0x1000 + 47).drop().enable();
  EXPECT_TRUE(drops_it(ports4(47, 1, 2)));
  EXPECT_TRUE(drops_it(ip6(47, {})));
  EXPECT_FALSE(drops_it(ports4(46, 1, 2)));
  constexpr uint32_t kOfClass[] = {17, 6, 1, 2};
  for (uint8_t number = 0; number < 4; ++number) {
    Rule(5).match_class(number).drop().enable();
    for (uint8_t other = 0; other < 4; ++other)
      EXPECT_EQ(drops_it(ports4(kOfClass[other], 1, 2)), number == other);
    EXPECT_FALSE(drops_it(untagged()));
  }
}

TEST_F(Acl, MatchesPortsOfLayer4) {
  Rule(5).match(CHIP_ACL_FIELD_L4_SRC_PORT, 0x1234).drop().enable();
  for (const uint32_t protocol : {6u, 17u}) {
    EXPECT_TRUE(drops_it(ports4(protocol, 0x1234, 80)));
    EXPECT_FALSE(drops_it(ports4(protocol, 0x3412, 80)));
    EXPECT_TRUE(drops_it(ip6(protocol, {0x12, 0x34, 0, 80})));
  }
  EXPECT_FALSE(drops_it(ports4(1, 0x1234, 80))) << "ICMP has none";
  EXPECT_TRUE(drops_it(ports4(17, 0x1234, 80, 0x2000))) << "the first fragment has them";
  EXPECT_FALSE(drops_it(ports4(17, 0x1234, 80, 2))) << "later ones have not";
  Rule(6).match(CHIP_ACL_FIELD_L4_DST_PORT, 80).drop().enable();
  EXPECT_TRUE(drops_it(ports4(6, 1, 80)));
  EXPECT_FALSE(drops_it(ports4(6, 80, 1)));
}

TEST_F(Acl, LooksBehindTheHeadersOfIp6) {
  Rule(5)
      .match(CHIP_ACL_FIELD_L4_DST_PORT, 80)
      .match(CHIP_ACL_FIELD_IP_PROTOCOL, 0x1000 + 17)
      .drop()
      .enable();
  const auto following = [](std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes &part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
  };
  const Bytes udp = {0, 1, 0, 80, 0, 8, 0, 0};
  const auto option = [](uint8_t next) { return Bytes{next, 0, 1, 4, 0, 0, 0, 0}; };
  const auto long_option = [](uint8_t next) {
    Bytes header = {next, 1};
    header.resize(16);
    return header;
  };
  const auto fragment = [](uint8_t next, uint8_t offset) {
    return Bytes{next, 0, 0, static_cast<uint8_t>(offset << 3 | 1), 0, 0, 0, 1};
  };
  EXPECT_TRUE(drops_it(ip6(0, following({option(17), udp}))));
  EXPECT_TRUE(drops_it(ip6(43, following({option(17), udp}))));
  EXPECT_TRUE(drops_it(ip6(60, following({long_option(17), udp}))));
  EXPECT_TRUE(drops_it(ip6(44, following({fragment(17, 0), udp}))));
  EXPECT_TRUE(
      drops_it(ip6(0, following({option(43), long_option(60), option(44), fragment(17, 0), udp}))));
  EXPECT_FALSE(drops_it(ip6(44, following({fragment(17, 1), udp})))) << "a later fragment";
  EXPECT_FALSE(drops_it(ip6(51, following({option(17), udp})))) << "no header that is passed over";
  EXPECT_FALSE(drops_it(ip6(0, {17})));
}

TEST_F(Acl, AMaskOfZeroMatchesWhatIsNotThere) {
  Rule(5).match(CHIP_ACL_FIELD_SRC_IP, 0, 0).match(CHIP_ACL_FIELD_INNER_VLAN_ID, 7, 0).drop();
  Rule(5).drop().enable();
  EXPECT_TRUE(drops_it(untagged()));
}

TEST_F(Acl, TheTemplateIsTheFormAndAlwaysMatches) {
  Rule(5).match(CHIP_ACL_FIELD_TEMPLATE, 3).from(mask({1})).drop().enable();
  EXPECT_TRUE(drops_it(untagged()));
}

TEST_F(Acl, TheLowestThatMatchesDecidesAlone) {
  Rule(900).from(mask({1})).drop().count(9).enable();
  Rule(30).from(mask({1})).match(CHIP_ACL_FIELD_ETHER_TYPE, 0x0800).drop().enable();
  Rule(20).from(mask({1})).permit().count(2).enable();
  EXPECT_EQ(out(1, untagged()), mask({2, 3, 4}));
  EXPECT_EQ(packets(2), 1u);
  EXPECT_EQ(packets(9), 0u);
  Rule(20).disable();
  EXPECT_EQ(out(1, untagged()), 0u);
  EXPECT_EQ(packets(9), 1u);
}

TEST_F(Acl, WhatNoneMatchesMeetsTheActionOfThePort) {
  ASSERT_EQ(rtk_acl_lookupMissAct_set(0, 1, CHIP_ACL_MISS_DROP), 0);
  EXPECT_TRUE(drops_it(untagged()));
  EXPECT_EQ(out(2, untagged()), mask({1, 3, 4}));
  Rule(5).match(CHIP_ACL_FIELD_ETHER_TYPE, 0x88b5).permit().enable();
  EXPECT_FALSE(drops_it(untagged()));
  EXPECT_TRUE(drops_it(to_all().type(0x88b6).bytes()));
}

TEST_F(Acl, WhatItDropsHasBeenLearned) {
  Rule(5).from(mask({1})).drop().enable();
  EXPECT_EQ(out(1, untagged()), 0u);
  EXPECT_EQ(drops(1).rule, 1u);
  EXPECT_TRUE(is_known(station(1)));
}

TEST_F(Acl, CountsFramesAndBytesAsReceived) {
  Rule(5).from(mask({1})).count(7).enable();
  arrive(1, plain(kBroadcast, station(1), 100));
  arrive(1, to_all().tag(1).type(0x88b5).fill(60).bytes());
  Bytes cut = untagged();
  cut.resize(20);
  arrive(1, cut);
  EXPECT_EQ(packets(7), 3u);
  EXPECT_EQ(octets(7), 104u + 64 + 64) << "the wire length";
}

TEST_F(Acl, MirroringAndCountingComeBeforeMeterAndDrop) {
  chip_mirror_entry mirror = {};
  mirror.enable = 1;
  mirror.mirroring_port = 9;
  mirror.field15 = 1;
  ASSERT_EQ(rtk_mirror_group_set(0, 2, &mirror), 0);
  const chip_acl_meter meter = {1, 0, 0};
  const chip_acl_burst burst = {{1, 1}};
  ASSERT_EQ(rtk_acl_meterEntry_set(0, 7, &meter), 0);
  ASSERT_EQ(rtk_acl_meterBurstSize_set(0, 0, &burst), 0);
  Rule(5).from(mask({1})).mirror(2).count(7).meter(7).trap().drop().enable();
  for (int each = 0; each < 3; ++each)
    EXPECT_EQ(out(1, untagged()), mask({9})) << "drop wins over where to";
  EXPECT_EQ(packets(7), 3u);
  EXPECT_EQ(drops(1).rule, 3u);
}

TEST_F(Acl, AMirrorNeedsAGroupForFlows) {
  chip_mirror_entry mirror = {};
  mirror.enable = 1;
  mirror.mirroring_port = 9;
  ASSERT_EQ(rtk_mirror_group_set(0, 2, &mirror), 0);
  Rule(5).from(mask({1})).mirror(2).enable();
  EXPECT_EQ(out(1, untagged()), mask({2, 3, 4}));
  mirror.field15 = 1;
  ASSERT_EQ(rtk_mirror_group_set(0, 2, &mirror), 0);
  EXPECT_EQ(out(1, untagged()), mask({2, 3, 4, 9}));
}

TEST_F(Acl, TrapsToTheProcessor) {
  Rule(5).from(mask({1})).trap().enable();
  arrive(1, tagged(1, 5));
  const Left sent = only(kCpu);
  EXPECT_EQ(sent.bytes, tagged(1, 5));
  EXPECT_EQ(sent.reason, uint32_t{VCHIP_TO_CPU_RULE});
  EXPECT_EQ(left(), 0u);
  EXPECT_EQ(drops(1).taken, 1u);
}

TEST_F(Acl, RedirectsToPorts) {
  ASSERT_EQ(rtk_port_isolation_set(0, 1, 0), 0);
  ASSERT_EQ(rtk_stp_mstpState_set(0, 0, 9, 1), 0);
  Rule(5).from(mask({1})).redirect(9).enable();
  EXPECT_EQ(out(1, untagged()), mask({9})) << "whatever VLAN, isolation and state say";
  Rule(5).redirect(1).enable();
  EXPECT_EQ(out(1, untagged()), mask({1})) << "back to where it came from";
  Rule(5).redirect(kCpu).enable();
  arrive(1, untagged());
  EXPECT_EQ(only(kCpu).reason, 0u) << "simply forwarded";
  ASSERT_EQ(vchip_cable_pull(0, 9), 0);
  Rule(5).redirect(9).enable();
  EXPECT_EQ(out(1, untagged()), 0u) << "link and admin count";
  EXPECT_EQ(drops(1).egress, 1u);
}

TEST_F(Acl, RedirectsToAMask) {
  const uint32_t ports = mask({1, 4, 9});
  ASSERT_EQ(rtk_l2_lookupMissFloodPortMask_set_with_idx(0, 2, 6, &ports), 0);
  Rule(5).from(mask({1})).forward(CHIP_ACL_FORWARD_MASK, 6).enable();
  EXPECT_EQ(out(1, untagged()), ports);
  Rule(5).forward(CHIP_ACL_FORWARD_MASK, 400).enable();
  EXPECT_EQ(out(1, untagged()), 0u) << "an empty mask";
}

TEST_F(Acl, RedirectsToAGroup) {
  join(0x010000000001, mask({3, 9}), 12);
  join(0x010000000002, mask({4}), 13);
  Rule(5).from(mask({1})).forward(CHIP_ACL_FORWARD_GROUP, 12).enable();
  EXPECT_EQ(out(1, untagged()), mask({3, 9}));
  Rule(5).forward(CHIP_ACL_FORWARD_GROUP, 13).enable();
  EXPECT_EQ(out(1, untagged()), mask({4}));
  Rule(5).forward(CHIP_ACL_FORWARD_GROUP, 14).enable();
  EXPECT_EQ(out(1, untagged()), 0u) << "there is no such group";
}

TEST_F(Acl, RedirectsPastStormControl) {
  ASSERT_EQ(rtk_rate_stormControlRate_set(0, 1, 2, 0), 0);
  ASSERT_EQ(rtk_rate_stormControlEnable_set(0, 1, 2, 1), 0);
  Rule(5).from(mask({1})).redirect(9).enable();
  for (int each = 0; each < 3; ++each) EXPECT_EQ(out(1, untagged()), mask({9}));
}

TEST_F(Acl, TakesThePortsOfATrunkOneByOne) {
  set_trunk(2, mask({5, 6}));
  const uint32_t ports = mask({5, 6});
  ASSERT_EQ(rtk_l2_lookupMissFloodPortMask_set_with_idx(0, 2, 6, &ports), 0);
  Rule(5).from(mask({1})).forward(CHIP_ACL_FORWARD_MASK, 6).enable();
  EXPECT_EQ(out(1, untagged()), ports);
}

TEST_F(Acl, WhereItIsNoMemberAFrameKeepsItsTags) {
  make_vlan(20, mask({1, 2}), mask({2}));
  Rule(5).from(mask({1})).redirect(9).enable();
  EXPECT_EQ(through(1, tagged(20, 3), 9), tagged(20, 3));
  EXPECT_EQ(through(1, untagged(), 9), untagged());
  Rule(5).redirect(2).enable();
  EXPECT_EQ(through(1, tagged(20, 3), 2), untagged()) << "an untagged member";
}

TEST_F(Acl, AssignsAVlan) {
  make_vlan(20, mask({2, 9}), mask({9}));
  Rule(5).from(mask({1})).inner_vlan(20).priority(6).enable();
  ASSERT_EQ(rtk_vlan_portIgrFilter_set(0, 1, 1), 0);
  arrive(1, untagged());
  const Bytes added = to_all().tag(20, 6).type(0x88b5).fill(64).bytes();
  EXPECT_EQ(only(2).bytes, added) << "with the priority of the rule";
  EXPECT_EQ(only(9).bytes, untagged());
  EXPECT_EQ(left(), 0u) << "the ingress is not looked at again";
  EXPECT_TRUE(is_known(station(1), 1)) << "it was learned before";
  EXPECT_FALSE(is_known(station(1), 20));
  EXPECT_EQ(through(1, tagged(1, 3), 2), tagged(20, 3)) << "a tag that came keeps its priority";
}

TEST_F(Acl, AFrameToItsSourceIsFloodedInAnotherVlan) {
  const Bytes frame = plain(station(1), station(1));
  EXPECT_EQ(out(1, frame), 0u);
  make_vlan(20, mask({2, 3}));
  Rule(5).from(mask({1})).inner_vlan(20).enable();
  EXPECT_EQ(out(1, frame), mask({2, 3}));
}

TEST_F(Acl, TheInstanceOfTheVlanAssignedCounts) {
  make_vlan(20, mask({2, 3}));
  ASSERT_EQ(rtk_stp_mstpInstance_create(0, 4), 0);
  ASSERT_EQ(rtk_vlan_stg_set(0, 20, 4), 0);
  ASSERT_EQ(rtk_stp_mstpState_set(0, 4, 3, 3), 0);
  Rule(5).from(mask({1})).inner_vlan(20).enable();
  EXPECT_EQ(out(1, untagged()), mask({3})) << "port 1 is disabled in it, and was not asked";
  Rule(5).inner_vlan(99).enable();
  EXPECT_EQ(out(1, untagged()), 0u) << "there is no such VLAN";
}

TEST_F(Acl, AnOrdinaryPortHasNoOuterVlan) {
  make_vlan(20, mask({2, 9}));
  Rule(5).from(mask({1})).outer_vlan(20).enable();
  EXPECT_EQ(out(1, untagged()), mask({2, 3, 4}));
}

TEST_F(Acl, JoinedRulesMatchOnlyTogether) {
  Rule(5).from(mask({1, 2})).join().drop().enable();
  Rule(6).match(CHIP_ACL_FIELD_ETHER_TYPE, 0x88b5).permit().enable();
  EXPECT_TRUE(drops_it(untagged())) << "with the actions of the first";
  EXPECT_FALSE(drops_it(to_all().type(0x88b6).bytes()));
  Rule(6).drop().enable();
  EXPECT_EQ(out(3, untagged()), mask({1, 2, 4})) << "the second never counts alone";
  Rule(5).disable();
  EXPECT_FALSE(drops_it(untagged())) << "nor if the first is disabled";
  Rule(5).from(mask({1, 2})).drop().enable();
  Rule(6).disable();
  EXPECT_FALSE(drops_it(untagged())) << "nor is the first asked alone";
}

TEST_F(Acl, ThreeCanBeJoined) {
  Rule(5).from(mask({1})).join().drop().enable();
  Rule(6).match(CHIP_ACL_FIELD_ETHER_TYPE, 0x0800).join().enable();
  Rule(7).match(CHIP_ACL_FIELD_L4_DST_PORT, 80).enable();
  EXPECT_TRUE(drops_it(ports4(6, 1, 80)));
  EXPECT_FALSE(drops_it(ports4(6, 1, 81)));
}

TEST_F(Acl, TheProcessorMeetsNone) {
  set_vlan(1, kMembers | mask({kCpu}), kMembers | mask({kCpu}));
  Rule(5).drop().enable();
  ASSERT_EQ(rtk_acl_lookupMissAct_set(0, kCpu, CHIP_ACL_MISS_DROP), 0);
  EXPECT_EQ(out(kCpu, untagged()), kMembers);
}

// Any words of an action are safe, and those that name nothing do nothing.
TEST_F(Acl, WordsBeyondTheirTablesDoNothing) {
  Rule rule(5);
  rule.from(mask({1})).mirror(4).count(1536).meter(256).inner_vlan(4096).priority(8).queue(8);
  rule.remark(3, 1).forward(CHIP_ACL_FORWARD_PORT, 29).enable();
  EXPECT_EQ(out(1, untagged()), mask({2, 3, 4}));
  rule.forward(CHIP_ACL_FORWARD_MASK, 512).remark(CHIP_ACL_REMARK_DSCP, 64).enable();
  EXPECT_EQ(out(1, untagged()), mask({2, 3, 4}));
}

}  // namespace
