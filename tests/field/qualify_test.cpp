// SPDX-License-Identifier: MIT
// Results of the qualifiers and what they leave in the chip. layout_test.cpp
// looks at the bytes.
#include <swctl-vchip/view.h>
#include <swctl/field.h>

#include <functional>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;

constexpr const char *kWrite = "rtk_acl_ruleEntryField_write";
constexpr uint8_t kMac[] = {0x01, 0x80, 0xC2, 0, 0, 0x0E};
constexpr uint8_t kMacMask[] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xF0};
constexpr uint8_t kIp6[16] = {0x20, 0x01, 0x0d, 0xb8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};
constexpr uint8_t kIp6Mask[16] = {0xFF, 0xFF, 0xFF, 0xFF};
constexpr user_pbmp_t kPorts = {{0x0000001E}};

// Every qualifier once, and how the chip reads what it wrote.
struct Qualifier {
  const char *name;
  int32_t (*qualify)(uint32_t lead, uint32_t unit, int32_t rule);
  const char *text;
};
#define CASE(function, text, ...)                                                                \
  {                                                                                              \
#function,                                                                                   \
        [](uint32_t lead, uint32_t unit,                                                         \
           int32_t                                                                               \
               rule) { return user_field_qualify_##function(lead, unit, rule, __VA_ARGS__); },   \
                                                                                            text \
  }
const Qualifier kQualifiers[] = {
    CASE(OuterVlan, "outer vlan 10 mask 0xfff", 10, 0xFFF),
    CASE(OuterVlanId, "outer vlan id 4094", 4094, 0xFFFF),
    CASE(InnerVlan, "inner vlan 35", 0x123, 0xFFF),
    CASE(InnerVlanId, "inner vlan id 291 mask 0xfff", 0x123, 0xFFF),
    CASE(EtherType, "ethertype 0x88cc", 0x88CC, 0xFFFF),
    CASE(L4SrcPort, "source port 67 mask 0xfffe", 67, 0xFFFE),
    CASE(L4DstPort, "destination port 53", 53, 0xFFFF),
    CASE(OuterVlanPri, "outer priority 5 mask 0x7", 5, 7),
    CASE(InnerVlanPri, "inner priority 6 mask 0x6", 6, 6),
    CASE(Ip6TrafficClass, "traffic class 0xb8 mask 0xfc", 0xB8, 0xFC),
    CASE(DSCP, "traffic class 0xb8 mask 0xfc", 46, 63),
    CASE(SrcMac, "source mac 01:80:c2:00:00:0e mask ff:ff:ff:ff:ff:f0", kMac, kMacMask),
    CASE(DstMac, "destination mac 01:80:c2:00:00:0e mask ff:ff:ff:ff:ff:f0", kMac, kMacMask),
    CASE(SrcIp, "source ip 10.1.2.3 mask 255.255.0.0", 0x0A010203, 0xFFFF0000),
    CASE(DstIp, "destination ip 10.1.2.3", 0x0A010203, 0xFFFFFFFF),
    CASE(SrcIp6,
         "source ip6 2001:0db8:0000:0000:0000:0000:0000:0001 mask "
         "ffff:ffff:0000:0000:0000:0000:0000:0000",
         kIp6, kIp6Mask),
    CASE(DstIp6,
         "destination ip6 2001:0db8:0000:0000:0000:0000:0000:0001 mask "
         "ffff:ffff:0000:0000:0000:0000:0000:0000",
         kIp6, kIp6Mask),
    CASE(InPorts, "in ports 1-4", kPorts),
    CASE(IpProtocol, "ip protocol tcp", 6, 0),
    CASE(IpProtocol, "ip protocol 0", 0, 0),
    CASE(IpProtocol, "ip protocol 89", 89, 0),
    CASE(FrameType, "frame type 2", 3, 0),
    CASE(iptype, "ip type 3 mask 0xf", 10, 0),
};

using FieldQualify = swctl_test::LibraryTest;

TEST_F(FieldQualify, ReachTheRuleOfTheUnit) {
  for (const Qualifier &test : kQualifiers) {
    SCOPED_TRACE(test.name);
    ASSERT_EQ(vchip_reset(), 0);
    EXPECT_EQ(test.qualify(0, 1, 1535), 0);
    const vchip::AclRuleView rule = vchip::acl_rule(1, 1535);
    ASSERT_EQ(rule.match.size(), 1u);
    EXPECT_EQ(rule.match[0].text, test.text);
    EXPECT_FALSE(rule.valid);
    EXPECT_TRUE(vchip::acl_rules(0).empty());
    EXPECT_EQ(vchip::acl_rules(1).size(), 1u);
  }
}

TEST_F(FieldQualify, MakeOneCallAndHandItsResultOn) {
  for (const Qualifier &test : kQualifiers) {
    SCOPED_TRACE(test.name);
    for (int32_t result : {0, 3, -1, -1005, INT32_MIN}) {
      swprobe::clear_plan();
      chip_answers(kWrite, result);
      swprobe::forget();
      EXPECT_EQ(test.qualify(0, 5, -3), result);
      const auto calls = swprobe::take();
      ASSERT_EQ(calls.size(), 1u);
      EXPECT_EQ(calls[0].name, kWrite);
      EXPECT_EQ(calls[0].in("unit"), 5);
      EXPECT_EQ(calls[0].in("table"), 0);
      EXPECT_EQ(calls[0].in("rule"), -3);
    }
  }
}

TEST_F(FieldQualify, IgnoreTheLeadingArgument) {
  for (const Qualifier &test : kQualifiers) {
    SCOPED_TRACE(test.name);
    swprobe::forget();
    EXPECT_EQ(test.qualify(0, 1, 7), 0);
    const auto with_zero = swprobe::take_lines();
    EXPECT_EQ(test.qualify(0xFFFFFFFF, 1, 7), 0);
    EXPECT_EQ(swprobe::take_lines(), with_zero);
  }
}

TEST_F(FieldQualify, ALaterWriteReplacesTheEarlierOne) {
  user_field_qualify_EtherType(0, 1, 7, 0x88CC, 0xFFFF);
  user_field_qualify_EtherType(0, 1, 7, 0x0800, 0xFF00);
  const vchip::AclRuleView rule = vchip::acl_rule(1, 7);
  ASSERT_EQ(rule.match.size(), 1u);
  EXPECT_EQ(rule.match[0].text, "ethertype 0x800 mask 0xff00");
}

TEST_F(FieldQualify, PrintNothingWhenTheChipRefuses) {
  const auto all = [] {
    for (const Qualifier &test : kQualifiers)
      EXPECT_EQ(test.qualify(0, VCHIP_UNITS, 0), VCHIP_E_UNIT);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

TEST_F(FieldQualify, FrameTypesOutsideTheTableAreRefused) {
  const auto all = [] {
    for (uint32_t type : {0u, 4u, 0x101u, 0xFFFFFFFFu})
      EXPECT_EQ(user_field_qualify_FrameType(0, 1, 7, type, 0xFF), -1);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
  EXPECT_NO_CALLS();
}

TEST_F(FieldQualify, IpTypesOutsideTheTableAreRefusedWithALine) {
  const struct {
    uint32_t type;
    const char *shown;
  } kRefused[] = {{7, "7"}, {0, "0"}, {0x105, "261"}, {0xFFFFFFFF, "-1"}};
  for (const auto &test : kRefused) {
    const auto qualify = [&] { EXPECT_EQ(user_field_qualify_iptype(0, 1, 7, test.type, 0), -1); };
    EXPECT_PRINTED(
        swctl_test::printed_by(qualify),
        std::string("user_field_qualify_iptype:[01989] unknow ip type [") + test.shown + "]\n", "");
  }
  EXPECT_NO_CALLS();
}

}  // namespace
