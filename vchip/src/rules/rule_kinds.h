// SPDX-License-Identifier: MIT
// The kinds of rules, actions and qualifiers that the adapter knows.
#ifndef VCHIP_RULES_RULE_KINDS_H
#define VCHIP_RULES_RULE_KINDS_H

#include <swctl/platform/adapter_records.h>

#include <cstdint>

#include "common/numbers.h"
#include "rules/rule_area.h"

namespace vchip {

struct EntityKind {
  uint32_t entity;
  const char *name;
  uint32_t limit;  // indexes
  uint32_t first;  // place of index 0 in the adapter's table
};
inline constexpr EntityKind kEntityKinds[] = {
    {ADP_FP_ENTITY_PROTOCOL_VLAN, "protocol-vlan", 20, 0},
    {ADP_FP_ENTITY_IP4_VLAN, "ip4-vlan", 20, 20},
    {ADP_FP_ENTITY_MAC_VLAN, "mac-vlan", 30, 40},
    {ADP_FP_ENTITY_VOICE_VLAN, "voice-vlan", 30, 70},
    {ADP_FP_ENTITY_DOUBLE_TAG, "double-tag", 30, 100},
    {ADP_FP_ENTITY_TRANSLATION, "translation", 30, 130},
};
inline constexpr uint32_t kRules = 160;

struct ActionKind {
  uint32_t number;
  const char *name;
  uint32_t max;  // largest value
};
inline constexpr ActionKind kActions[kActionKinds] = {
    {ADP_FP_ACTION_VLAN, "vlan", kVlanIds - 1},
    {ADP_FP_ACTION_PRIORITY, "priority", kPriorities - 1},
    {ADP_FP_ACTION_OUTER_VLAN, "outer-vlan", kVlanIds - 1},
    {ADP_FP_ACTION_OUTER_PRIORITY, "outer-priority", kPriorities - 1},
};

enum class Reading { mac, ip4, ports, half, ethertype, word };
struct QualifierKind {
  uint32_t number;
  const char *name;
  uint32_t length;  // bytes
  Reading reading;
};
inline constexpr QualifierKind kQualifiers[kQualifierKinds] = {
    {ADP_FP_QUALIFIER_SOURCE_MAC, "source-mac", 6, Reading::mac},
    {ADP_FP_QUALIFIER_SOURCE_IP4, "source-ip4", 4, Reading::ip4},
    {ADP_FP_QUALIFIER_INGRESS_PORTS, "ingress-ports", 32, Reading::ports},
    {ADP_FP_QUALIFIER_TAG_STATE, "tag-state", 2, Reading::half},
    {ADP_FP_QUALIFIER_RECEIVED_VLAN, "received-vlan", 2, Reading::half},
    {ADP_FP_QUALIFIER_ETHERTYPE, "ethertype", 2, Reading::ethertype},
    {ADP_FP_QUALIFIER_ENCAPSULATION, "encapsulation", 4, Reading::word},
};

// Null for a number that the adapter does not know.
constexpr const EntityKind *entity_kind(uint32_t entity) {
  for (const EntityKind &kind : kEntityKinds)
    if (kind.entity == entity) return &kind;
  return nullptr;
}
constexpr const ActionKind *action_kind(uint32_t number) {
  for (const ActionKind &kind : kActions)
    if (kind.number == number) return &kind;
  return nullptr;
}
constexpr const QualifierKind *qualifier_kind(uint32_t number) {
  for (const QualifierKind &kind : kQualifiers)
    if (kind.number == number) return &kind;
  return nullptr;
}

// The caller's area may be of any make, and so may an image; one that no call
// of the adapter has written is not whole.
constexpr bool is_known(const RuleQualifier &qualifier) {
  const QualifierKind *kind = qualifier_kind(qualifier.kind);
  return kind != nullptr && kind->length == qualifier.length && qualifier.masked <= 1;
}
constexpr bool is_known(const RuleAction &action) {
  const ActionKind *kind = action_kind(action.kind);
  return kind != nullptr && action.value <= kind->max;
}
constexpr bool is_whole(const RuleArea &area) {
  if (area.actions > kActionKinds || area.qualifiers > kQualifierKinds) return false;
  for (uint32_t place = 0; place < area.actions; ++place)
    if (!is_known(area.action[place])) return false;
  for (uint32_t place = 0; place < area.qualifiers; ++place)
    if (!is_known(area.qualifier[place])) return false;
  return true;
}

}  // namespace vchip

#endif
