// SPDX-License-Identifier: MIT
#include "chip/vlan_rules.h"

#include <swctl/platform/adapter_records.h>
#include <swctl/vlan_rules.h>

#include <algorithm>

#include "chip/absent.h"

namespace swsh {
namespace {

bool is_there(const RuleKind &kind, int32_t index) {
  const int32_t place = kind.first + index;
  return ask(kNextRule, rule_text(kind, index), kind.entity, place).index == place;
}

}  // namespace

const std::array<RuleKind, 6> kRuleKinds = {{
    {"translation", "Translation of the VLAN of tagged frames", ADP_FP_ENTITY_TRANSLATION, 0,
     USER_VLAN_TRANSLATE_RULES, "from", "to", SWSH_CALL(user_vlan_translate_delete)},
    {"double-tag", "An outer tag for tagged frames", ADP_FP_ENTITY_DOUBLE_TAG, 0,
     USER_VLAN_DTAG_RULES, "inner", "vlan", SWSH_CALL(user_vlan_dtag_delete)},
    {"mac", "By source MAC address", ADP_FP_ENTITY_MAC_VLAN, 0, USER_VLAN_MAC_RULES, "tag", "vlan",
     SWSH_CALL(user_vlan_mac_delete)},
    {"ip4", "By source IPv4 subnet", ADP_FP_ENTITY_IP4_VLAN, 0, USER_VLAN_IP4_RULES, "tag", "vlan",
     SWSH_CALL(user_vlan_ip4_delete)},
    {"voice", "Voice VLAN, by OUI", ADP_FP_ENTITY_VOICE_VLAN, ADP_FP_FIRST_VOICE_RULE,
     USER_VLAN_VOICE_RULES, "tag", "vlan", SWSH_CALL(user_vlan_voice_oui_mac_delete)},
    {"protocol", "By protocol", ADP_FP_ENTITY_PROTOCOL_VLAN, 0, USER_VLAN_PROTOCOL_RULES, "tag",
     "vlan", SWSH_CALL(user_port_protocol_vlan_delete)},
}};

const RuleKind &rule_kind(const std::string &word) {
  return *std::ranges::find(kRuleKinds, word, &RuleKind::word);
}

std::string rule_text(const RuleKind &kind, int32_t index) {
  return std::string(kind.word) + " rule " + std::to_string(index);
}

void expect_free(const RuleKind &kind, int32_t index) {
  if (kNextRule.find() == nullptr || !is_there(kind, index)) return;
  const std::string number = std::to_string(index);
  const std::string del = "vlan rule del " + std::string(kind.word) + ' ' + number;
  throw CommandError(wrong_usage(rule_text(kind, index) + " is in use", number,
                                 {"a free rule, or " + del + " before"}));
}

void expect_rule(const RuleKind &kind, int32_t index) {
  if (kNextRule.find() != nullptr && !is_there(kind, index))
    throw there_is_no(std::string(kind.word) + " rule", std::to_string(index));
}

void expect_translation(uint32_t unit, int32_t index) {
  if (kNextTranslation.find() == nullptr) return;
  const std::string number = std::to_string(index);
  if (ask(kNextTranslation, "entry " + number, unit, index).index != index)
    throw there_is_no("translation", number);
}

}  // namespace swsh
