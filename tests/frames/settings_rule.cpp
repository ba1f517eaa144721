// SPDX-License-Identifier: MIT
// Rules, meters, and the rules of the adapter.
#include <swctl/platform/adapter.h>

#include "settings.h"

namespace frames::rule_setting {
namespace {

constexpr uint32_t kZero = 0;
constexpr uint32_t kNotPort1 = ~mask({1});

const uint8_t *bytes_of(const uint32_t &word) {
  return reinterpret_cast<const uint8_t *>(&word);
}

constexpr chip_acl_action dropping() {
  chip_acl_action action = {};
  action.word[CHIP_ACL_WORD_VERDICT] = CHIP_ACL_VERDICT_DROP;
  return action;
}
constexpr chip_acl_action kDrop = dropping();

constexpr chip_acl_action metering() {
  chip_acl_action action = {};
  action.word[CHIP_ACL_WORD_METER] = 1;
  action.word[CHIP_ACL_WORD_METER_NUMBER] = 7;
  return action;
}
constexpr chip_acl_action kMetering = metering();

constexpr chip_acl_meter kMeter = {1, 0, 0};
constexpr chip_acl_burst kBurst = {{8, 8}};
constexpr chip_acl_operation kJoined = {{0, 1, 0}};
constexpr chip_acl_range kAllRules = {0, 1535};

void rule_without_action() {
  done(rtk_acl_ruleEntryField_write(0, 0, 10, CHIP_ACL_FIELD_IN_PORTS, bytes_of(kZero),
                                    bytes_of(kNotPort1)));
  done(rtk_acl_ruleValidate_set(0, 0, 10, 1));
}
void rule() {
  rule_without_action();
  done(rtk_acl_ruleAction_set(0, 0, 10, &kDrop));
}
void disabled_rule() {
  rule();
  done(rtk_acl_ruleValidate_set(0, 0, 10, 0));
}
void rule_for_all() {
  done(rtk_acl_ruleAction_set(0, 0, 10, &kDrop));
  done(rtk_acl_ruleValidate_set(0, 0, 10, 1));
}
void ports_1_and_2() {
  flood();
  send(2, plain(kBroadcast, station(2)));
}
void meter_rule() {
  rule_without_action();
  done(rtk_acl_ruleAction_set(0, 0, 10, &kMetering));
}
void metered() {
  meter_rule();
  done(rtk_acl_meterEntry_set(0, 7, &kMeter));
}
void burst() {
  for (int each = 0; each < 100; ++each) send(1, plain(kBroadcast, station(1), 1020));
}

// A rule of a MAC VLAN that is being made.
adp_fp_entity_rule_t building;

constexpr uint32_t kVlan20 = 20;
constexpr uint8_t kStation1[6] = {2, 0, 0, 0, 0, 1};

void begin() {
  make_vlan(mask({1, 2, 3}));
  building = {};
  building.entity = ADP_FP_ENTITY_MAC_VLAN;
}
void begin_with_action() {
  begin();
  done(adp_fp_add_entity_action(&building, ADP_FP_ACTION_VLAN, &kVlan20, 4, nullptr, 0));
}
void added() {
  begin_with_action();
  done(adp_fp_add_entity_rule(building));
}
void finish() {
  done(adp_fp_add_entity_rule(building));
  flood();
  send(1, plain(kBroadcast, station(9)));
}

}  // namespace

std::vector<Setting> all() {
  return {
      SWCTL_SETTING(rtk_acl_ruleEntryField_write,
                    (0, 0, 10, CHIP_ACL_FIELD_IN_PORTS, bytes_of(kZero), bytes_of(kNotPort1)),
                    rule_for_all, ports_1_and_2),
      SWCTL_SETTING(rtk_acl_ruleOperation_set, (0, 0, 10, &kJoined), rule, flood),
      SWCTL_SETTING(rtk_acl_ruleValidate_set, (0, 0, 10, 1), disabled_rule, flood),
      SWCTL_SETTING(rtk_acl_rule_del, (0, 0, &kAllRules), rule, flood),
      SWCTL_SETTING(rtk_acl_ruleAction_set, (0, 0, 10, &kDrop), rule_without_action, flood),
      SWCTL_SETTING(rtk_acl_lookupMissAct_set, (0, 1, CHIP_ACL_MISS_DROP), nullptr, flood),
      SWCTL_SETTING(rtk_acl_meterEntry_set, (0, 7, &kMeter), meter_rule, burst),
      SWCTL_SETTING(rtk_acl_meterBurstSize_set, (0, 0, &kBurst), metered, burst),
      SWCTL_SETTING(rtk_acl_meterIncludeIfg_set, (0, 0), metered, burst),
      SWCTL_SETTING(adp_fp_add_entity_action,
                    (&building, ADP_FP_ACTION_VLAN, &kVlan20, 4, nullptr, 0), begin, finish),
      SWCTL_SETTING(adp_fp_add_entity_qualify,
                    (&building, ADP_FP_QUALIFIER_SOURCE_MAC, kStation1, 6, nullptr, 0),
                    begin_with_action, finish),
      SWCTL_SETTING(adp_fp_add_entity_rule, (building), begin_with_action, flood),
      SWCTL_SETTING(adp_fp_delete_entity_rule, (ADP_FP_ENTITY_MAC_VLAN, 0, 0), added, flood),
  };
}

}  // namespace frames::rule_setting
