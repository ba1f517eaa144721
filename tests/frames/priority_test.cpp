// SPDX-License-Identifier: MIT
// The internal priority, the queue, and what is written into frames.
#include <swctl-vchip/queue_view.h>

#include <array>

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

// Each priority has its queue, each source of a priority another value: DSCP 1,
// inner tag 2, outer tag 3 (4 if it is drop-eligible), defaults 5 and 6.
class Priority : public frames::Switch {
 protected:
  static constexpr uint32_t kGroup = 2;
  using Weights = std::array<uint32_t, 5>;

  void SetUp() override {
    Switch::SetUp();
    set_vlan(1, mask({1, 2}), mask({1, 2}));
    const uint32_t own[8] = {0, 1, 2, 3, 4, 5, 6, 7};
    ASSERT_EQ(rtk_qos_priMap_set(0, 8, own), 0);
    ASSERT_EQ(rtk_qos_dscpPriRemap_set(0, 46, 1), 0);
    ASSERT_EQ(rtk_qos_1pPriRemap_set(0, 7, 2), 0);
    ASSERT_EQ(rtk_qos_outer1pPriRemap_set(0, 7, 0, 3), 0);
    ASSERT_EQ(rtk_qos_outer1pPriRemap_set(0, 7, 1, 4), 0);
    ASSERT_EQ(rtk_qos_portInnerPri_set(0, 1, 5), 0);
    ASSERT_EQ(rtk_qos_portOuterPri_set(0, 1, 6), 0);
    ASSERT_EQ(rtk_qos_portPriSelGroup_set(0, 1, kGroup), 0);
  }
  static void trust(const Weights &weights) {
    ASSERT_EQ(rtk_qos_priSelGroup_set(0, kGroup, weights.data()), 0);
  }
  // The queue by which a frame left port 2.
  static uint32_t queue_of(const Bytes &frame) {
    EXPECT_EQ(vchip_drops_clear(0, 2), 0);
    arrive(1, frame);
    left();
    const vchip::PortQueueView queues = vchip::port_queues(0, 2);
    for (uint32_t queue = 0; queue < 8; ++queue)
      if (queues.queues[queue].sent != 0) return queue;
    ADD_FAILURE() << "nothing left port 2";
    return 8;
  }
  static Maker to_all() { return Maker(kBroadcast, station(1)); }
  static Bytes untagged() { return plain(kBroadcast, station(1)); }
  static Bytes tagged(uint32_t priority = 7) {
    return to_all().tag(1, priority).type(0x88b5).fill(64).bytes();
  }
  static Bytes ip(uint32_t dscp = 46) {
    return to_all().type(0x0800).ip4(17, 1, 2, 20, dscp << 2).bytes();
  }
  static Bytes tagged_ip() {
    return to_all().tag(1, 7).type(0x0800).ip4(17, 1, 2, 20, 46 << 2).bytes();
  }
  static Bytes outer(bool drop_eligible = false) {
    return to_all().tag(1, 7, 0x88a8, drop_eligible).type(0x88b5).bytes();
  }
  static Bytes everything() {
    return to_all().tag(1, 7, 0x88a8).tag(1, 7).type(0x0800).ip4(17, 1, 2, 20, 46 << 2).bytes();
  }
  static void double_tag() {
    ASSERT_EQ(rtk_l2_vlanMode_set(0, 1, 1), 0);
    ASSERT_EQ(rtk_vlan_portIgrTagKeepEnable_set(0, 1, 1, 1), 0);
  }
};

TEST_F(Priority, IsTheHeaviestThatTheFrameHas) {
  double_tag();
  for (uint32_t heaviest = 0; heaviest < 5; ++heaviest) {
    Weights weights = {1, 1, 1, 1, 1};
    weights[heaviest] = 2;
    trust(weights);
    constexpr uint32_t kValues[] = {1, 2, 3, 5, 6};
    EXPECT_EQ(queue_of(everything()), kValues[heaviest]);
  }
}

TEST_F(Priority, EqualsAreInTheirOrder) {
  double_tag();
  trust({3, 3, 3, 3, 3});
  EXPECT_EQ(queue_of(everything()), 1u) << "DSCP";
  EXPECT_EQ(queue_of(to_all().tag(1, 7, 0x88a8).tag(1, 7).type(0x88b5).bytes()), 2u) << "inner";
  EXPECT_EQ(queue_of(outer()), 3u) << "outer";
  EXPECT_EQ(queue_of(outer(true)), 4u) << "by its DEI too";
  EXPECT_EQ(queue_of(untagged()), 5u) << "the inner default";
  trust({3, 3, 3, 3, 4});
  EXPECT_EQ(queue_of(everything()), 6u) << "the outer default";
}

TEST_F(Priority, WhatTheFrameHasNotDoesNotCount) {
  trust({7, 6, 5, 1, 2});
  EXPECT_EQ(queue_of(tagged_ip()), 1u);
  EXPECT_EQ(queue_of(ip()), 1u);
  EXPECT_EQ(queue_of(tagged()), 2u);
  EXPECT_EQ(queue_of(to_all().tag(0, 7).type(0x88b5).bytes()), 2u) << "of a priority tag";
  EXPECT_EQ(queue_of(untagged()), 6u);
  EXPECT_EQ(queue_of(outer()), 6u) << "an ordinary port knows no outer tag";
}

TEST_F(Priority, OfIp6IsThatOfItsTrafficClass) {
  trust({7, 6, 5, 1, 2});
  Maker maker = to_all();
  maker.type(0x86dd).word(0x6b800000).half(0).byte(59).byte(1);
  EXPECT_EQ(queue_of(maker.bytes()), 1u);
}

TEST_F(Priority, DefaultsAreInternalAndNotRemapped) {
  ASSERT_EQ(rtk_qos_1pPriRemap_set(0, 5, 0), 0);
  trust({0, 0, 0, 1, 0});
  EXPECT_EQ(queue_of(tagged()), 5u);
}

TEST_F(Priority, IsByTheGroupOfThePort) {
  trust({0, 0, 0, 1, 0});
  const uint32_t by_tag[5] = {0, 1, 0, 0, 0};
  ASSERT_EQ(rtk_qos_priSelGroup_set(0, 1, by_tag), 0);
  EXPECT_EQ(queue_of(tagged()), 5u);
  ASSERT_EQ(rtk_qos_portPriSelGroup_set(0, 1, 1), 0);
  EXPECT_EQ(queue_of(tagged()), 2u);
}

TEST_F(Priority, OfARuleReplacesIt) {
  trust({7, 6, 5, 1, 2});
  BoardRule(ADP_FP_ENTITY_MAC_VLAN, 0).priority(4).add();
  EXPECT_EQ(queue_of(tagged_ip()), 4u);
  Rule rule(5);
  rule.from(mask({1})).priority(7).enable();
  EXPECT_EQ(queue_of(tagged_ip()), 7u);
  rule.queue(3).enable();
  EXPECT_EQ(queue_of(tagged_ip()), 3u) << "a rule's queue wins over the map";
}

TEST_F(Priority, LeadsToAQueueByTheMap) {
  const uint32_t reversed[8] = {7, 6, 5, 4, 3, 2, 1, 0};
  ASSERT_EQ(rtk_qos_priMap_set(0, 8, reversed), 0);
  trust({7, 6, 5, 1, 2});
  EXPECT_EQ(queue_of(tagged()), 5u);
}

TEST_F(Priority, OfACopyForTheProcessorToo) {
  trust({7, 6, 5, 1, 2});
  ASSERT_EQ(rtk_trap_rmaGroupAction_set(0, 2, 2), 0);
  arrive(1, Maker(0x0180c2000004, station(1)).tag(1, 7).type(0x88b5).bytes());
  EXPECT_EQ(vchip::port_queues(0, kCpu).queues[2].sent, 1u);
}

TEST_F(Priority, TheStartUpWordHasNoEffect) {
  for (const uint32_t source : {0u, 1u}) {
    ASSERT_EQ(rtk_qos_1pDfltPriSrcSel_set(0, source), 0);
    trust({0, 0, 0, 1, 0});
    EXPECT_EQ(queue_of(untagged()), 5u);
  }
}

// Port 2 is a tagged member.
class Remark : public Priority {
 protected:
  void SetUp() override {
    Priority::SetUp();
    set_vlan(1, mask({1, 2}), mask({1}));
    trust({7, 6, 5, 1, 2});
  }
  static uint32_t priority_in(const Bytes &frame) { return frame.at(14) >> 5; }
};

TEST_F(Remark, OfAPortWritesTheInternalPriorityOrTheTags) {
  ASSERT_EQ(rtk_qos_1pRemarkSrcSel_set(0, 0), 0);
  EXPECT_EQ(priority_in(through(1, tagged(), 2)), 7u) << "the port does not remark";
  ASSERT_EQ(rtk_qos_1pRemarkEnable_set(0, 2, 1), 0);
  EXPECT_EQ(priority_in(through(1, tagged(), 2)), 2u);
  EXPECT_EQ(priority_in(through(1, untagged(), 2)), 6u);
  ASSERT_EQ(rtk_qos_1pRemarkSrcSel_set(0, 1), 0);
  EXPECT_EQ(priority_in(through(1, tagged(), 2)), 7u);
  EXPECT_EQ(priority_in(through(1, untagged(), 2)), 5u) << "the inner default, as it was added";
}

TEST_F(Remark, KeepsTheEligibility) {
  ASSERT_EQ(rtk_qos_1pRemarkSrcSel_set(0, 0), 0);
  ASSERT_EQ(rtk_qos_1pRemarkEnable_set(0, 2, 1), 0);
  const Bytes frame = to_all().tag(1, 7, 0x8100, true).type(0x88b5).bytes();
  EXPECT_EQ(through(1, frame, 2).at(14), 0x50) << "priority 2 and DEI";
}

TEST_F(Remark, OfARuleIsOfTheInnerTag) {
  Rule(5).from(mask({1})).remark(CHIP_ACL_REMARK_INNER, 4).enable();
  EXPECT_EQ(priority_in(through(1, tagged(), 2)), 4u);
  Rule(5).from(mask({1})).remark(CHIP_ACL_REMARK_OUTER, 3).enable();
  EXPECT_EQ(priority_in(through(1, tagged(), 2)), 7u) << "an ordinary port has no outer tag";
}

TEST_F(Remark, OfARuleIsOfEitherTagInDoubleTagMode) {
  double_tag();
  ASSERT_EQ(rtk_l2_vlanMode_set(0, 2, 1), 0);
  ASSERT_EQ(rtk_vlan_portEgrTagKeepEnable_set(0, 2, 1, 1), 0);
  const Bytes frame = to_all().tag(1, 7, 0x88a8).tag(9, 6).type(0x88b5).bytes();
  const auto tags = [&] {
    const Bytes sent = through(1, frame, 2);
    return std::pair(sent.at(14) >> 5, sent.at(18) >> 5);
  };
  EXPECT_EQ(tags(), std::pair(7, 6));
  Rule(5).from(mask({1})).remark(CHIP_ACL_REMARK_INNER, 4).enable();
  EXPECT_EQ(tags(), std::pair(7, 4));
  Rule(5).from(mask({1})).remark(CHIP_ACL_REMARK_OUTER, 3).enable();
  EXPECT_EQ(tags(), std::pair(3, 6));
}

TEST_F(Remark, OfTheDscpMendsTheChecksum) {
  set_vlan(1, mask({1, 2}), mask({1, 2}));
  for (uint32_t to = 0; to < 64; ++to) {
    Rule(5).from(mask({1})).remark(CHIP_ACL_REMARK_DSCP, to).enable();
    for (const uint32_t traffic : {0u, 0xb9u, 0xffu}) {
      const auto frame = [](uint32_t value) {
        return to_all().type(0x0800).ip4(6, 0x0a000001, 0xfffffffe, 20, value).fill(60).bytes();
      };
      EXPECT_EQ(through(1, frame(traffic), 2), frame(to << 2 | (traffic & 3))) << "ECN is kept";
    }
  }
}

TEST_F(Remark, OfTheDscpLeavesOtherFramesAlone) {
  set_vlan(1, mask({1, 2}), mask({1, 2}));
  Rule(5).from(mask({1})).remark(CHIP_ACL_REMARK_DSCP, 9).enable();
  Maker maker = to_all();
  maker.type(0x86dd).word(0x6b800000).half(0).byte(59).byte(1);
  for (const Bytes &frame : {maker.bytes(), untagged()}) EXPECT_EQ(through(1, frame, 2), frame);
}

}  // namespace
