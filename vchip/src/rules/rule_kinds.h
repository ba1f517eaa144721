// SPDX-License-Identifier: MIT
// The kinds of rules, actions and qualifiers that the adapter knows.
#ifndef VCHIP_RULES_RULE_KINDS_H
#define VCHIP_RULES_RULE_KINDS_H

#include <cstdint>

#include "rules/rule_area.h"

namespace vchip {

struct EntityKind {
  uint32_t entity;
  const char *name;
  uint32_t limit;  // indexes
  uint32_t first;  // place of index 0 in the adapter's table
};
inline constexpr EntityKind kEntityKinds[] = {
    {12, "protocol-vlan", 20, 0}, {13, "ip4-vlan", 20, 20},    {21, "mac-vlan", 30, 40},
    {24, "voice-vlan", 30, 70},   {32, "double-tag", 30, 100}, {33, "translation", 30, 130},
};
inline constexpr uint32_t kRules = 160;

struct ActionKind {
  uint32_t number;
  const char *name;
  uint32_t max;  // largest value
};
inline constexpr ActionKind kActions[kActionKinds] = {
    {123, "vlan", 4095},
    {124, "priority", 7},
    {130, "outer-vlan", 4095},
    {134, "outer-priority", 7},
};

enum class Reading { mac, ip4, ports, half, ethertype, word };
struct QualifierKind {
  uint32_t number;
  const char *name;
  uint32_t length;  // bytes
  Reading reading;
};
inline constexpr QualifierKind kQualifiers[kQualifierKinds] = {
    {6, "source-mac", 6, Reading::mac},        {9, "source-ip4", 4, Reading::ip4},
    {13, "ingress-ports", 32, Reading::ports}, {21, "tag-state", 2, Reading::half},
    {22, "received-vlan", 2, Reading::half},   {29, "ethertype", 2, Reading::ethertype},
    {89, "encapsulation", 4, Reading::word},
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

}  // namespace vchip

#endif
