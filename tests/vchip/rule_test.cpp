// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/platform/adapter.h>

#include <cstring>
#include <gmock/gmock.h>

#include "private_chip.h"

namespace {

using testing::HasSubstr;
using testing::SizeIs;
using vchip::RuleView;

constexpr uint32_t kVlan = 100;

class Rules : public vchip_test::PrivateChip {
 protected:
  static adp_fp_entity_rule_t record(uint32_t entity, uint32_t index) {
    adp_fp_entity_rule_t rule = {};
    rule.entity = entity;
    rule.index = index;
    return rule;
  }
  static int32_t add_action(adp_fp_entity_rule_t &rule, uint32_t kind, uint32_t value) {
    return adp_fp_add_entity_action(&rule, kind, &value, sizeof value, nullptr, 0);
  }
  template <typename Value>
  static int32_t add_qualifier(adp_fp_entity_rule_t &rule, uint32_t kind, const Value &value,
                               const Value &mask) {
    uint8_t bytes[2][sizeof value];
    memcpy(bytes[0], &value, sizeof value);
    memcpy(bytes[1], &mask, sizeof mask);
    return adp_fp_add_entity_qualify(&rule, kind, bytes[0], sizeof value, bytes[1], sizeof mask);
  }
};

TEST_F(Rules, AreNotThereUntilTheyAreHandedOver) {
  adp_fp_entity_rule_t rule = record(33, 5);
  EXPECT_EQ(add_action(rule, 123, kVlan), 0);
  EXPECT_EQ(add_qualifier(rule, 22, uint16_t{10}, uint16_t{0xFFFF}), 0);
  EXPECT_THAT(vchip::rules(), SizeIs(0));
  EXPECT_EQ(adp_fp_add_entity_rule(rule), 0);
  const std::vector<RuleView> rules = vchip::rules();
  ASSERT_THAT(rules, SizeIs(1));
  EXPECT_EQ(rules[0].entity, 33u);
  EXPECT_EQ(rules[0].index, 5u);
  EXPECT_EQ(rules[0].actions, (std::vector<vchip::RuleActionView>{{123, kVlan}}));
  EXPECT_EQ(rules[0].qualifiers.at(0).mask, (std::vector<uint8_t>{0xFF, 0xFF}));
}

TEST_F(Rules, AreOnePerEntityAndIndex) {
  EXPECT_EQ(adp_fp_add_entity_rule(record(33, 5)), 0);
  EXPECT_EQ(adp_fp_add_entity_rule(record(33, 5)), VCHIP_E_RULE_EXISTS);
  EXPECT_EQ(adp_fp_add_entity_rule(record(32, 5)), 0);
  EXPECT_EQ(adp_fp_add_entity_rule(record(33, 6)), 0);
  EXPECT_THAT(vchip::rules(), SizeIs(3));
  EXPECT_EQ(adp_fp_delete_entity_rule(33, 5, 0), 0);
  EXPECT_EQ(adp_fp_delete_entity_rule(33, 5, 0), VCHIP_E_NO_RULE);
  EXPECT_THAT(vchip::rules(), SizeIs(2));
}

TEST_F(Rules, HaveLimitsPerEntity) {
  const struct {
    uint32_t entity;
    uint32_t limit;
  } kinds[] = {{12, 20}, {13, 20}, {21, 30}, {24, 30}, {32, 30}, {33, 30}};
  for (const auto &kind : kinds) {
    for (uint32_t index = 0; index < kind.limit; ++index)
      EXPECT_EQ(adp_fp_add_entity_rule(record(kind.entity, index)), 0);
    for (const uint32_t index : {kind.limit, UINT32_MAX}) {
      EXPECT_EQ(adp_fp_add_entity_rule(record(kind.entity, index)), VCHIP_E_INDEX);
      EXPECT_EQ(adp_fp_delete_entity_rule(kind.entity, static_cast<int32_t>(index), 0),
                VCHIP_E_INDEX);
    }
  }
  EXPECT_THAT(vchip::rules(), SizeIs(160));
}

TEST_F(Rules, OfUnknownKindsAreRefused) {
  for (const uint32_t entity : {0u, 11u, 14u, 34u, UINT32_MAX}) {
    EXPECT_EQ(adp_fp_add_entity_rule(record(entity, 0)), VCHIP_E_RULE_KIND);
    EXPECT_EQ(adp_fp_delete_entity_rule(entity, 0, 0), VCHIP_E_RULE_KIND);
  }
  EXPECT_EQ(adp_fp_delete_entity_rule(33, 0, 1), VCHIP_E_VALUE);
}

TEST_F(Rules, RefuseActionsThatTheyCannotHold) {
  adp_fp_entity_rule_t rule = record(33, 0);
  const adp_fp_entity_rule_t empty = rule;
  const uint8_t byte = 0;
  EXPECT_EQ(add_action(rule, 125, 0), VCHIP_E_RULE_KIND);
  EXPECT_EQ(add_action(rule, 123, 4096), VCHIP_E_VALUE);
  EXPECT_EQ(add_action(rule, 124, 8), VCHIP_E_VALUE);
  EXPECT_EQ(adp_fp_add_entity_action(&rule, 123, &kVlan, 2, nullptr, 0), VCHIP_E_VALUE);
  EXPECT_EQ(adp_fp_add_entity_action(&rule, 123, &kVlan, 4, &byte, 1), VCHIP_E_VALUE);
  EXPECT_EQ(adp_fp_add_entity_action(&rule, 123, nullptr, 4, nullptr, 0), VCHIP_E_NULL);
  EXPECT_EQ(adp_fp_add_entity_action(nullptr, 123, &kVlan, 4, nullptr, 0), VCHIP_E_NULL);
  EXPECT_EQ(memcmp(&rule, &empty, sizeof rule), 0);
  EXPECT_EQ(add_action(rule, 123, 1), 0);
  EXPECT_EQ(add_action(rule, 123, 2), VCHIP_E_DUPLICATE);
}

TEST_F(Rules, RefuseQualifiersThatTheyCannotHold) {
  adp_fp_entity_rule_t rule = record(33, 0);
  const adp_fp_entity_rule_t empty = rule;
  const uint8_t bytes[8] = {};
  EXPECT_EQ(adp_fp_add_entity_qualify(&rule, 7, bytes, 2, bytes, 2), VCHIP_E_RULE_KIND);
  EXPECT_EQ(adp_fp_add_entity_qualify(&rule, 22, bytes, 4, bytes, 4), VCHIP_E_VALUE);
  EXPECT_EQ(adp_fp_add_entity_qualify(&rule, 22, bytes, 2, bytes, 1), VCHIP_E_VALUE);
  EXPECT_EQ(adp_fp_add_entity_qualify(&rule, 22, bytes, 2, nullptr, 2), VCHIP_E_VALUE);
  EXPECT_EQ(adp_fp_add_entity_qualify(&rule, 22, nullptr, 2, bytes, 2), VCHIP_E_NULL);
  EXPECT_EQ(adp_fp_add_entity_qualify(nullptr, 22, bytes, 2, bytes, 2), VCHIP_E_NULL);
  EXPECT_EQ(memcmp(&rule, &empty, sizeof rule), 0);
  EXPECT_EQ(adp_fp_add_entity_qualify(&rule, 22, bytes, 2, nullptr, 0), 0);
  EXPECT_EQ(adp_fp_add_entity_qualify(&rule, 22, bytes, 2, bytes, 2), VCHIP_E_DUPLICATE);
}

TEST_F(Rules, RefuseAnAreaThatTheAdapterDidNotWrite) {
  adp_fp_entity_rule_t rule = record(33, 0);
  memset(rule.area, 0xFF, sizeof rule.area);
  EXPECT_EQ(adp_fp_add_entity_rule(rule), VCHIP_E_VALUE);
  EXPECT_EQ(add_action(rule, 123, 1), VCHIP_E_VALUE);
  rule = record(33, 0);
  ASSERT_EQ(add_action(rule, 123, 1), 0);
  for (size_t at = 0; at < 64; ++at) {
    adp_fp_entity_rule_t damaged = rule;
    damaged.area[at] ^= 0x40;
    adp_fp_add_entity_rule(damaged);
    vchip::dump_json(-1, {-1, "rules"});
    adp_fp_delete_entity_rule(33, 0, 0);
  }
}

TEST_F(Rules, AreDumpedDecoded) {
  struct Mac {
    uint8_t byte[6];
  };
  user_pbmp_t ports = {{2, 256}};
  const user_pbmp_t all = {{~0u, ~0u, ~0u, ~0u, ~0u, ~0u, ~0u, ~0u}};
  adp_fp_entity_rule_t rule = record(21, 7);
  EXPECT_EQ(add_action(rule, 123, kVlan), 0);
  EXPECT_EQ(add_qualifier(rule, 13, ports, all), 0);
  EXPECT_EQ(add_qualifier(rule, 6, Mac{{2, 0, 0, 0, 0, 0x1f}}, Mac{{255, 255, 255, 0, 0, 0}}), 0);
  EXPECT_EQ(add_qualifier(rule, 9, 0xC0000201u, 0xFFFFFF00u), 0);
  EXPECT_EQ(add_qualifier(rule, 29, uint16_t{0x806}, uint16_t{0xFFFF}), 0);
  EXPECT_EQ(add_qualifier(rule, 21, uint16_t{1}, uint16_t{0xFFFF}), 0);
  EXPECT_EQ(adp_fp_add_entity_rule(rule), 0);
  EXPECT_THAT(
      vchip::dump_json(-1),
      HasSubstr(
          R"("rules":[{"entity":21,"name":"mac-vlan","index":7,)"
          R"("actions":[{"number":123,"name":"vlan","value":100}],"qualifiers":[)"
          R"({"number":13,"name":"ingress-ports","value":[1,40]},)"
          R"({"number":6,"name":"source-mac","value":"02:00:00:00:00:1f","mask":"ff:ff:ff:00:00:00"},)"
          R"({"number":9,"name":"source-ip4","value":"192.0.2.1","mask":"255.255.255.0"},)"
          R"({"number":29,"name":"ethertype","value":"0x0806"},)"
          R"({"number":21,"name":"tag-state","value":1}]}])"));
}

TEST_F(Rules, AreResetWithTheBoard) {
  ASSERT_EQ(adp_fp_add_entity_rule(record(33, 5)), 0);
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_THAT(vchip::rules(), SizeIs(0));
}

}  // namespace
