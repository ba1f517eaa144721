// SPDX-License-Identifier: MIT
// How frames are tagged when they leave.
#include "rule_maker.h"

namespace {

using frames::BoardRule;
using frames::Bytes;
using frames::kBroadcast;
using frames::Maker;
using frames::mask;
using frames::plain;
using frames::Rule;
using frames::station;

// VLAN 20 has port 1, tagged members 2 and 3, and an untagged one, 4.
class Tags : public frames::Switch {
 protected:
  void SetUp() override {
    Switch::SetUp();
    make_vlan(20, mask({1, 2, 3, 4}), mask({4}));
    ASSERT_EQ(rtk_vlan_portPvid_set(0, 1, 20), 0);
  }
  static Maker to_all() { return Maker(kBroadcast, station(1)); }
  static Bytes untagged() { return plain(kBroadcast, station(1)); }
  // As it comes in, or as an untagged one of 60 bytes leaves.
  static Bytes tagged(uint32_t vid, uint32_t priority = 0, uint32_t type = 0x8100,
                      bool drop_eligible = false) {
    return to_all().tag(vid, priority, type, drop_eligible).type(0x88b5).fill(64).bytes();
  }
  static void convert(uint32_t index, uint32_t vid, uint32_t new_vid, int32_t port = -1) {
    chip_vlan_egress_entry entry = {};
    entry.valid = 1;
    entry.vid = vid;
    entry.ignore_vid = static_cast<uint8_t>(vid == 0 ? 1 : 0);
    entry.ignore_second_key = 1;
    entry.ignore_port = static_cast<uint8_t>(port < 0 ? 1 : 0);
    entry.port = port < 0 ? 0 : static_cast<uint32_t>(port);
    entry.new_vid = new_vid;
    ASSERT_EQ(rtk_vlan_egrVlanCnvtEntry_set(0, index, &entry), 0);
  }
};

TEST_F(Tags, AreAddedAndTakenAsTheVlanSays) {
  arrive(1, untagged());
  EXPECT_EQ(only(2).bytes, tagged(20));
  EXPECT_EQ(only(4).bytes, untagged());
  arrive(1, tagged(20));
  EXPECT_EQ(only(2).bytes, tagged(20));
  EXPECT_EQ(only(4).bytes, untagged());
}

TEST_F(Tags, AFrameIsPaddedAfterItsTagWasTaken) {
  const Bytes shortest = to_all().tag(20).type(0x88b5).half(0x4242).fill(60).bytes();
  EXPECT_EQ(through(1, shortest, 4), to_all().type(0x88b5).half(0x4242).fill(60).bytes());
}

TEST_F(Tags, ThatCameKeepPriorityAndEligibility) {
  EXPECT_EQ(through(1, tagged(20, 5, 0x8100, true), 2), tagged(20, 5, 0x8100, true));
  EXPECT_EQ(through(1, tagged(0, 5, 0x8100, true), 2), tagged(20, 5, 0x8100, true))
      << "a priority tag gets the VLAN";
}

TEST_F(Tags, ThatAreAddedHaveTheDefaultOfTheIngress) {
  ASSERT_EQ(rtk_qos_portInnerPri_set(0, 1, 3), 0);
  ASSERT_EQ(rtk_qos_portOuterPri_set(0, 1, 6), 0);
  ASSERT_EQ(rtk_qos_portInnerPri_set(0, 2, 7), 0);
  EXPECT_EQ(through(1, untagged(), 2), tagged(20, 3));
  EXPECT_EQ(through(1, tagged(20, 1), 2), tagged(20, 1));
}

TEST_F(Tags, ThatAreAddedHaveThePriorityOfTheRuleThatAssigned) {
  ASSERT_EQ(rtk_qos_portInnerPri_set(0, 1, 3), 0);
  BoardRule(ADP_FP_ENTITY_MAC_VLAN, 0).vlan(20).priority(5).add();
  EXPECT_EQ(through(1, untagged(), 2), tagged(20, 5));
  make_vlan(30, mask({1, 2}));
  Rule(5).from(mask({1})).inner_vlan(30).priority(6).enable();
  EXPECT_EQ(through(1, untagged(), 2), tagged(30, 6));
}

TEST_F(Tags, HaveTheTypeOfThePort) {
  ASSERT_EQ(rtk_vlan_innerTpidEntry_set(0, 2, 0x9100), 0);
  ASSERT_EQ(rtk_vlan_portEgrInnerTpid_set(0, 3, 2), 0);
  for (const Bytes &frame : {untagged(), tagged(20)}) {
    arrive(1, frame);
    EXPECT_EQ(only(2).bytes, tagged(20));
    EXPECT_EQ(only(3).bytes, tagged(20, 0, 0x9100));
  }
}

TEST_F(Tags, AreConvertedByTheLowestEntryThatMatches) {
  convert(9, 0, 99);
  EXPECT_EQ(through(1, untagged(), 2), tagged(99));
  convert(7, 20, 77);
  EXPECT_EQ(through(1, untagged(), 2), tagged(77));
  convert(5, 21, 55);
  convert(6, 20, 66, 3);
  arrive(1, untagged());
  EXPECT_EQ(only(2).bytes, tagged(77));
  EXPECT_EQ(only(3).bytes, tagged(66));
  EXPECT_EQ(only(4).bytes, untagged()) << "there is no tag to convert";
}

TEST_F(Tags, AreConvertedByTheVlanThatTheFrameIsIn) {
  convert(0, 20, 30);
  convert(1, 30, 40);
  EXPECT_EQ(through(1, tagged(20), 2), tagged(30)) << "once";
  make_vlan(30, mask({1, 2}));
  Rule(5).from(mask({1})).inner_vlan(30).enable();
  EXPECT_EQ(through(1, tagged(20), 2), tagged(40));
}

TEST_F(Tags, KeepFlagsDoNothingOnAnOrdinaryPort) {
  for (const int32_t port : {1, 2, 4}) {
    ASSERT_EQ(rtk_vlan_portIgrTagKeepEnable_set(0, port, 1, 1), 0);
    ASSERT_EQ(rtk_vlan_portEgrTagKeepEnable_set(0, port, 1, 1), 0);
    ASSERT_EQ(rtk_vlan_portEgrOuterTagSts_set(0, port, 1), 0);
    ASSERT_EQ(rtk_vlan_portEgrOuterTpid_set(0, port, 2), 0);
  }
  arrive(1, tagged(20, 3));
  EXPECT_EQ(only(2).bytes, tagged(20, 3));
  EXPECT_EQ(only(4).bytes, untagged());
}

TEST_F(Tags, ForwardedToTheProcessorAsForAnyMember) {
  set_vlan(20, mask({1, kCpu}));
  EXPECT_EQ(through(1, untagged(), kCpu), tagged(20));
  set_vlan(20, mask({1, kCpu}), mask({kCpu}));
  EXPECT_EQ(through(1, tagged(20), kCpu), untagged());
}

// A service VLAN 20 (outer TPID 0x88a8) between customer ports 1 and 5 and
// uplinks 2 and 3.
class Provider : public frames::Switch {
 protected:
  static constexpr uint32_t kServiceType = 0x88a8;

  void SetUp() override {
    Switch::SetUp();
    make_vlan(20, mask({1, 2, 3, 5}), mask({1, 5}));
    for (const int32_t port : {1, 2, 3, 5}) {
      ASSERT_EQ(rtk_l2_vlanMode_set(0, port, 1), 0);
      ASSERT_EQ(rtk_vlan_portOuterPvid_set(0, port, 20), 0);
    }
    for (const int32_t port : {2, 3}) {
      ASSERT_EQ(rtk_vlan_portIgrTagKeepEnable_set(0, port, 0, 1), 0);
      ASSERT_EQ(rtk_vlan_portEgrOuterTagSts_set(0, port, 1), 0);
    }
  }
  static Maker to_all() { return Maker(kBroadcast, station(1)); }
  static Bytes customer(uint32_t vid = 7, uint32_t priority = 3) {
    return to_all().tag(vid, priority).type(0x88b5).fill(64).bytes();
  }
  static Bytes service(uint32_t vid = 20, uint32_t priority = 0, uint32_t type = kServiceType,
                       uint32_t inner = 7, uint32_t inner_priority = 3) {
    return to_all()
        .tag(vid, priority, type)
        .tag(inner, inner_priority)
        .type(0x88b5)
        .fill(68)
        .bytes();
  }
};

TEST_F(Provider, AddsAndRemovesTheServiceTag) {
  arrive(1, customer());
  EXPECT_EQ(only(2).bytes, service());
  EXPECT_EQ(only(5).bytes, customer()) << "the customer's tag is carried";
  arrive(2, service());
  EXPECT_EQ(only(1).bytes, customer());
}

TEST_F(Provider, CarriesUntaggedFramesToo) {
  const Bytes untagged = plain(kBroadcast, station(1));
  const Bytes outer = to_all().tag(20, 0, kServiceType).type(0x88b5).fill(64).bytes();
  EXPECT_EQ(through(1, untagged, 2), outer);
  EXPECT_EQ(through(2, outer, 1), untagged);
}

TEST_F(Provider, DoesNotDeliverAForeignService) {
  EXPECT_EQ(out(2, service(21)), 0u) << "there is no such VLAN";
  make_vlan(21, mask({2, 3}));
  EXPECT_EQ(out(2, service(21)), mask({3}));
  ASSERT_EQ(rtk_vlan_portIgrFilter_set(0, 2, 1), 0);
  EXPECT_EQ(out(2, service(21)), mask({3}));
  set_vlan(21, mask({3}));
  EXPECT_EQ(out(2, service(21)), 0u);
  EXPECT_EQ(drops(2).filter, 2u);
}

TEST_F(Provider, TheOuterTagIsTheVlan) {
  EXPECT_EQ(out(1, customer(4095)), mask({2, 3, 5})) << "a VLAN ID inside is the customer's";
  EXPECT_EQ(out(2, service(4095)), 0u);
  EXPECT_EQ(drops(2).vlan, 1u);
  EXPECT_TRUE(is_known(station(1), 20));
  EXPECT_EQ(out(2, service(0, 5)), mask({1, 3, 5})) << "a priority tag: the outer default";
}

TEST_F(Provider, ChoosesTheTypeByPort) {
  ASSERT_EQ(rtk_vlan_outerTpidEntry_set(0, 1, 0x9200), 0);
  ASSERT_EQ(rtk_vlan_portEgrOuterTpid_set(0, 3, 1), 0);
  arrive(1, customer());
  EXPECT_EQ(only(2).bytes, service());
  EXPECT_EQ(only(3).bytes, service(20, 0, 0x9200));
  EXPECT_EQ(through(2, service(), 3), service(20, 0, 0x9200));
  EXPECT_EQ(through(3, service(20, 0, 0x9200), 1), customer());
}

TEST_F(Provider, AnUplinkThatDoesNotKeepTheOuterTagDoesNotLookAtIt) {
  ASSERT_EQ(rtk_vlan_portIgrTagKeepEnable_set(0, 2, 0, 0), 0);
  make_vlan(21, mask({2, 3}));
  EXPECT_EQ(out(2, service(21)), mask({1, 3, 5})) << "in the port's outer default VLAN";
}

TEST_F(Provider, PriorityOfTheServiceTag) {
  ASSERT_EQ(rtk_qos_portOuterPri_set(0, 1, 4), 0);
  ASSERT_EQ(rtk_qos_portInnerPri_set(0, 1, 2), 0);
  EXPECT_EQ(through(1, customer(), 2), service(20, 4)) << "the outer default of the customer port";
  ASSERT_EQ(rtk_vlan_portEgrTagKeepEnable_set(0, 3, 0, 1), 0);
  EXPECT_EQ(through(2, service(20, 6), 3), service(20, 6)) << "kept";
  ASSERT_EQ(rtk_vlan_portEgrTagKeepEnable_set(0, 3, 0, 0), 0);
  EXPECT_EQ(through(2, service(20, 6), 3), service(20, 0)) << "made again";
}

TEST_F(Provider, RulesAssignTheServiceByTheCustomersTag) {
  make_vlan(21, mask({1, 2}), mask({1}));
  BoardRule(ADP_FP_ENTITY_DOUBLE_TAG, 0)
      .from(1u << 2)
      .half(ADP_FP_QUALIFIER_TAG_STATE, ADP_FP_TAG_STATE_TAGGED)
      .half(ADP_FP_QUALIFIER_RECEIVED_VLAN, 8)
      .act(ADP_FP_ACTION_OUTER_VLAN, 21)
      .act(ADP_FP_ACTION_OUTER_PRIORITY, 5)
      .add();
  EXPECT_EQ(through(1, customer(8), 2), service(21, 5, kServiceType, 8));
  EXPECT_EQ(through(1, customer(7), 2), service());
}

TEST_F(Provider, RulesOfTheInnerVlanWriteTheCustomersTag) {
  BoardRule(ADP_FP_ENTITY_TRANSLATION, 0).half(ADP_FP_QUALIFIER_RECEIVED_VLAN, 7).vlan(9).add();
  EXPECT_EQ(through(1, customer(), 2), service(20, 0, kServiceType, 9));
  BoardRule(ADP_FP_ENTITY_TRANSLATION, 0).remove();
  Rule(5).from(mask({1})).inner_vlan(10).enable();
  EXPECT_EQ(through(1, customer(), 2), service(20, 0, kServiceType, 10));
}

TEST_F(Provider, RulesOfTheInnerVlanAddTheCustomersTag) {
  const Bytes untagged = plain(kBroadcast, station(1));
  ASSERT_EQ(rtk_qos_portInnerPri_set(0, 1, 3), 0);
  const auto with_inner = [](uint32_t vid, uint32_t priority) {
    return service(20, 0, kServiceType, vid, priority);
  };
  BoardRule(ADP_FP_ENTITY_MAC_VLAN, 0).vlan(9).add();
  EXPECT_EQ(through(1, untagged, 2), with_inner(9, 3)) << "with the inner default of the port";
  BoardRule(ADP_FP_ENTITY_MAC_VLAN, 0).remove();
  BoardRule(ADP_FP_ENTITY_MAC_VLAN, 0).vlan(9).priority(5).add();
  EXPECT_EQ(through(1, untagged, 2), with_inner(9, 5)) << "with that of the rule";
  Rule(5).from(mask({1})).inner_vlan(10).priority(6).enable();
  EXPECT_EQ(through(1, untagged, 2), with_inner(10, 6));
}

TEST_F(Provider, ARulesOuterVlanReplacesTheService) {
  make_vlan(21, mask({1, 3}));
  Rule(5).from(mask({1})).outer_vlan(21).priority(6).enable();
  arrive(1, customer());
  EXPECT_EQ(only(3).bytes, service(21, 6));
  EXPECT_EQ(left(), 0u);
}

TEST_F(Provider, TheCustomersTagIsTouchedOnlyWhereItIsKept) {
  ASSERT_EQ(rtk_vlan_innerTpidEntry_set(0, 1, 0x9100), 0);
  ASSERT_EQ(rtk_vlan_portEgrInnerTpid_set(0, 2, 1), 0);
  EXPECT_EQ(through(1, customer(), 2), service()) << "carried as it came, its type too";
  ASSERT_EQ(rtk_vlan_portIgrTagKeepEnable_set(0, 1, 1, 0), 0);
  ASSERT_EQ(rtk_vlan_portEgrTagKeepEnable_set(0, 2, 1, 0), 0);
  const Bytes other =
      to_all().tag(20, 0, kServiceType).tag(7, 3, 0x9100).type(0x88b5).fill(68).bytes();
  EXPECT_EQ(through(1, customer(), 2), other) << "with the type of the port of exit";
  ASSERT_EQ(rtk_vlan_portEgrTagKeepEnable_set(0, 2, 0, 0), 0);
  const Bytes without = to_all().tag(20, 0, kServiceType).type(0x88b5).fill(64).bytes();
  EXPECT_EQ(through(1, customer(), 2), without) << "or taken off there";
}

TEST_F(Provider, TheSecondKeyOfAConversionIsTheCustomersVlan) {
  chip_vlan_egress_entry entry = {};
  entry.valid = 1;
  entry.vid = 20;
  entry.second_key = 8;
  entry.ignore_port = 1;
  entry.new_vid = 88;
  ASSERT_EQ(rtk_vlan_egrVlanCnvtEntry_set(0, 0, &entry), 0);
  EXPECT_EQ(through(1, customer(8), 2), service(88, 0, kServiceType, 8));
  EXPECT_EQ(through(1, customer(7), 2), service());
  entry.second_key = 0;
  ASSERT_EQ(rtk_vlan_egrVlanCnvtEntry_set(0, 0, &entry), 0);
  const Bytes outer = to_all().tag(20, 0, kServiceType).type(0x88b5).fill(64).bytes();
  EXPECT_EQ(through(1, plain(kBroadcast, station(1)), 2), outer) << "it has none";
}

}  // namespace
