// SPDX-License-Identifier: MIT
// VLAN classification by rules of the platform adapter. The adapter sees the
// actions of a rule before its qualifiers, in the order in which they are here.
#include <swctl/vlan_rules.h>

#include "vlan/entity_rule.h"
#include "vlan/vid.h"

namespace {

using swctl::EntityRule;
using swctl::has_index;
using swctl::RuleKind;
using swctl::vid_of;

constexpr RuleKind kProtocolVlan = {ADP_FP_ENTITY_PROTOCOL_VLAN, USER_VLAN_PROTOCOL_RULES, 0};
constexpr RuleKind kIp4Vlan = {ADP_FP_ENTITY_IP4_VLAN, USER_VLAN_IP4_RULES, 0};
constexpr RuleKind kMacVlan = {ADP_FP_ENTITY_MAC_VLAN, USER_VLAN_MAC_RULES, 0};
constexpr RuleKind kVoiceVlan = {ADP_FP_ENTITY_VOICE_VLAN, USER_VLAN_VOICE_RULES,
                                 ADP_FP_FIRST_VOICE_RULE};
constexpr RuleKind kDoubleTag = {ADP_FP_ENTITY_DOUBLE_TAG, USER_VLAN_DTAG_RULES, 0};
constexpr RuleKind kTranslation = {ADP_FP_ENTITY_TRANSLATION, USER_VLAN_TRANSLATE_RULES, 0};

constexpr int32_t kRefused = -1;
constexpr uint32_t kMacLength = 6;
constexpr uint32_t kAllProtocolPorts = 1;  // bit of interface 0

// Of the frames that a rule is for.
constexpr uint16_t kTagged = ADP_FP_TAG_STATE_TAGGED;
constexpr uint16_t kUntagged = ADP_FP_TAG_STATE_UNTAGGED;

void match_ports(EntityRule &rule, const user_pbmp_t *ports) {
  constexpr uint32_t kAll = UINT32_MAX;
  constexpr user_pbmp_t kEveryPort = {{kAll, kAll, kAll, kAll, kAll, kAll, kAll, kAll}};
  rule.match_masked(ADP_FP_QUALIFIER_INGRESS_PORTS, ports, &kEveryPort, sizeof kEveryPort);
}

void match_tag(EntityRule &rule, uint32_t vid) {
  rule.match_half(ADP_FP_QUALIFIER_TAG_STATE, kTagged);
  rule.match_half(ADP_FP_QUALIFIER_RECEIVED_VLAN, vid_of(vid));
}

void assign(EntityRule &rule, uint32_t vid, uint32_t priority) {
  rule.act(ADP_FP_ACTION_VLAN, vid_of(vid));
  if (priority != 0) rule.act(ADP_FP_ACTION_PRIORITY, priority);
}

// The adapter's code of an encapsulation; 0 for one that it does not know.
constexpr uint32_t encapsulation_code(uint32_t encapsulation) {
  switch (encapsulation) {
    case USER_ENCAPSULATION_ETHERNET: return ADP_FP_ENCAPSULATION_ETHERNET;
    case USER_ENCAPSULATION_LLC: return ADP_FP_ENCAPSULATION_LLC;
    case USER_ENCAPSULATION_SNAP: return ADP_FP_ENCAPSULATION_SNAP;
    default: return 0;
  }
}

int32_t delete_rule(const RuleKind &kind, int32_t index) {
  const uint32_t own = static_cast<uint32_t>(index) + static_cast<uint32_t>(kind.first);
  adp_fp_delete_entity_rule(kind.entity, static_cast<int32_t>(own), 0);
  return 0;
}

}  // namespace

int32_t user_vlan_translate_add(uint32_t, uint32_t, int32_t index, uint32_t,
                                const user_pbmp_t *ports, uint32_t old_vid, uint32_t new_vid) {
  if (!has_index(kTranslation, index)) return kRefused;
  EntityRule rule(kTranslation, index);
  rule.act(ADP_FP_ACTION_VLAN, vid_of(new_vid));
  match_ports(rule, ports);
  match_tag(rule, old_vid);
  return rule.hand_over();
}

int32_t user_vlan_translate_delete(uint32_t, uint32_t, int32_t index) {
  return delete_rule(kTranslation, index);
}

int32_t user_vlan_dtag_add(uint32_t, uint32_t, int32_t index, uint32_t, const user_pbmp_t *ports,
                           uint32_t inner_vid, uint32_t outer_vid, uint32_t outer_priority) {
  if (!has_index(kDoubleTag, index)) return kRefused;
  EntityRule rule(kDoubleTag, index);
  rule.act(ADP_FP_ACTION_OUTER_VLAN, vid_of(outer_vid));
  if (outer_priority != 0) rule.act(ADP_FP_ACTION_OUTER_PRIORITY, outer_priority);
  match_ports(rule, ports);
  match_tag(rule, inner_vid);
  return rule.hand_over();
}

int32_t user_vlan_dtag_delete(uint32_t, uint32_t, int32_t index) {
  return delete_rule(kDoubleTag, index);
}

int32_t user_vlan_mac_add(uint32_t, uint32_t, int32_t index, const uint8_t *mac,
                          const uint8_t *mask, uint32_t vid, uint32_t priority,
                          const user_pbmp_t *ports) {
  if (!has_index(kMacVlan, index)) return kRefused;
  EntityRule rule(kMacVlan, index);
  assign(rule, vid, priority);
  match_ports(rule, ports);
  rule.match_masked(ADP_FP_QUALIFIER_SOURCE_MAC, mac, mask, kMacLength);
  rule.match_half(ADP_FP_QUALIFIER_TAG_STATE, kUntagged);
  return rule.hand_over();
}

int32_t user_vlan_mac_delete(uint32_t, uint32_t, int32_t index) {
  return delete_rule(kMacVlan, index);
}

int32_t user_vlan_ip4_add(uint32_t, uint32_t, int32_t index, uint32_t address, uint32_t netmask,
                          uint32_t vid, uint32_t priority, const user_pbmp_t *ports) {
  if (!has_index(kIp4Vlan, index)) return kRefused;
  EntityRule rule(kIp4Vlan, index);
  assign(rule, vid, priority);
  match_ports(rule, ports);
  rule.match_masked(ADP_FP_QUALIFIER_SOURCE_IP4, &address, &netmask, sizeof address);
  rule.match_half(ADP_FP_QUALIFIER_TAG_STATE, kUntagged);
  return rule.hand_over();
}

int32_t user_vlan_ip4_delete(uint32_t, uint32_t, int32_t index) {
  return delete_rule(kIp4Vlan, index);
}

int32_t user_vlan_voice_oui_mac_add(uint32_t, uint32_t, int32_t index, const uint8_t *mac,
                                    const uint8_t *mask, uint32_t vid, uint32_t priority,
                                    const user_pbmp_t *ports) {
  if (!has_index(kVoiceVlan, index)) return kRefused;
  EntityRule rule(kVoiceVlan, index);
  rule.act(ADP_FP_ACTION_VLAN, vid_of(vid));
  rule.act(ADP_FP_ACTION_PRIORITY, priority);
  match_ports(rule, ports);
  rule.match_masked(ADP_FP_QUALIFIER_SOURCE_MAC, mac, mask, kMacLength);
  return rule.hand_over();
}

int32_t user_vlan_voice_oui_mac_delete(uint32_t, uint32_t, int32_t index) {
  return delete_rule(kVoiceVlan, index);
}

int32_t user_port_protocol_vlan_add(uint32_t, uint32_t, int32_t index, uint32_t,
                                    const user_pbmp_t *ports, uint32_t encapsulation,
                                    uint32_t ethertype, uint32_t vid, uint32_t priority) {
  if (!has_index(kProtocolVlan, index)) return kRefused;
  EntityRule rule(kProtocolVlan, index);
  assign(rule, vid, priority);
  if ((ports->word[0] & kAllProtocolPorts) == 0) match_ports(rule, ports);
  const uint32_t code = encapsulation_code(encapsulation);
  if (code == 0) return kRefused;
  rule.match_word(ADP_FP_QUALIFIER_ENCAPSULATION, code);
  rule.match_half(ADP_FP_QUALIFIER_ETHERTYPE, static_cast<uint16_t>(ethertype));
  rule.match_half(ADP_FP_QUALIFIER_TAG_STATE, kUntagged);
  return rule.hand_over();
}

int32_t user_port_protocol_vlan_delete(uint32_t, uint32_t, int32_t index) {
  return delete_rule(kProtocolVlan, index);
}
