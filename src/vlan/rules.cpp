// SPDX-License-Identifier: MIT
// VLAN classification by rules of the platform adapter. The adapter sees the
// actions of a rule before its qualifiers, in the order that stands here.
#include <swctl/vlan_rules.h>

#include "vlan/entity_rule.h"
#include "vlan/vid.h"

namespace {

using swctl::EntityRule;
using swctl::has_index;
using swctl::RuleKind;
using swctl::vid_of;

constexpr RuleKind kProtocolVlan = {12, USER_VLAN_PROTOCOL_RULES, 0};
constexpr RuleKind kIp4Vlan = {13, USER_VLAN_IP4_RULES, 0};
constexpr RuleKind kMacVlan = {21, USER_VLAN_MAC_RULES, 0};
// The adapter's first 15 rules of this kind belong to others.
constexpr RuleKind kVoiceVlan = {24, USER_VLAN_VOICE_RULES, 15};
constexpr RuleKind kDoubleTag = {32, USER_VLAN_DTAG_RULES, 0};
constexpr RuleKind kTranslation = {33, USER_VLAN_TRANSLATE_RULES, 0};

constexpr int32_t kRefused = -1;
constexpr uint32_t kMacLength = 6;
constexpr uint32_t kAllProtocolPorts = 1;  // bit of interface 0

// Whether the rule is for frames with the tag of a VLAN that it names, or for
// those that come without one.
constexpr uint16_t kTagged = 0;
constexpr uint16_t kUntagged = 1;

void match_ports(EntityRule &rule, const user_pbmp_t *ports) {
  constexpr uint32_t kAll = UINT32_MAX;
  constexpr user_pbmp_t kEveryPort = {{kAll, kAll, kAll, kAll, kAll, kAll, kAll, kAll}};
  rule.match_masked(swctl::kIngressPorts, ports, &kEveryPort, sizeof kEveryPort);
}

void match_tag(EntityRule &rule, uint32_t vid) {
  rule.match_half(swctl::kTagState, kTagged);
  rule.match_half(swctl::kReceivedVlan, vid_of(vid));
}

void assign(EntityRule &rule, uint32_t vid, uint32_t priority) {
  rule.act(swctl::kAssignVlan, vid_of(vid));
  if (priority != 0) rule.act(swctl::kAssignPriority, priority);
}

// The adapter's code of an encapsulation; 0 for one that it does not know.
constexpr uint32_t encapsulation_code(uint32_t encapsulation) {
  switch (encapsulation) {
    case USER_ENCAPSULATION_ETHERNET: return 1;
    case USER_ENCAPSULATION_LLC: return 2;
    case USER_ENCAPSULATION_SNAP: return 3;
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
  rule.act(swctl::kAssignVlan, vid_of(new_vid));
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
  rule.act(swctl::kAssignOuterVlan, vid_of(outer_vid));
  if (outer_priority != 0) rule.act(swctl::kAssignOuterPriority, outer_priority);
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
  rule.match_masked(swctl::kSourceMac, mac, mask, kMacLength);
  rule.match_half(swctl::kTagState, kUntagged);
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
  rule.match_masked(swctl::kSourceIp4, &address, &netmask, sizeof address);
  rule.match_half(swctl::kTagState, kUntagged);
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
  rule.act(swctl::kAssignVlan, vid_of(vid));
  rule.act(swctl::kAssignPriority, priority);
  match_ports(rule, ports);
  rule.match_masked(swctl::kSourceMac, mac, mask, kMacLength);
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
  rule.match_word(swctl::kEncapsulation, code);
  rule.match_half(swctl::kEthertype, static_cast<uint16_t>(ethertype));
  rule.match_half(swctl::kTagState, kUntagged);
  return rule.hand_over();
}

int32_t user_port_protocol_vlan_delete(uint32_t, uint32_t, int32_t index) {
  return delete_rule(kProtocolVlan, index);
}
