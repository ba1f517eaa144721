// SPDX-License-Identifier: MIT
#include <string>

#include "acl/acl_block.h"
#include "document/findings.h"

namespace vchip {
namespace {

constexpr uint32_t kAllFields = (uint32_t{1} << kAclFields.size()) - 1;

// Numbers are in the order of the machine, addresses in that of a frame.
size_t width_of(const AclField &field, size_t bytes) {
  const bool is_address = field.style == FieldStyle::mac || field.style == FieldStyle::ip6;
  return is_address ? 1 : bytes;
}

void name_field(Findings &findings, const AclRule &rule, size_t place) {
  const size_t start = start_of_field(place);
  const size_t bytes = start_of_field(place + 1) - start;
  const std::string name = kAclFields[place].name;
  const size_t width = width_of(kAclFields[place], bytes);
  findings.any_bytes(("data." + name).c_str(), rule.data + start, bytes, width);
  findings.any_bytes(("mask." + name).c_str(), rule.mask + start, bytes, width);
}

// Bytes of a field that was not written are 0. The first byte of one that was
// is limited, where the field has only that one.
void check_field(Findings &findings, const AclRule &rule, size_t place) {
  const AclField &field = kAclFields[place];
  const size_t start = start_of_field(place);
  const size_t bytes = start_of_field(place + 1) - start;
  if (!rule.has_field(place)) {
    findings.zero_bytes(field.name, rule.data + start, bytes);
    findings.zero_bytes(field.name, rule.mask + start, bytes);
    return;
  }
  findings.at_most(field.name, rule.data[start], field.limit);
}

void check_rule(Findings &findings, const AclRule &rule, bool last) {
  if (findings.is_empty(rule)) return;
  findings.flag("valid", rule.valid);
  findings.at_most("joined", rule.joined, last ? 0 : 1);
  findings.bits("written", rule.written, kAllFields);
  findings.flag("has_action", rule.has_action);
  for (size_t place = 0; findings.is_observed() && place < kAclFields.size(); ++place)
    name_field(findings, rule, place);
  for (size_t place = 0; place < kAclFields.size(); ++place) check_field(findings, rule, place);
  constexpr size_t kEnd = start_of_field(kAclFields.size());
  findings.zero_bytes("data", rule.data + kEnd, kMatchBytes - kEnd);
  findings.zero_bytes("mask", rule.mask + kEnd, kMatchBytes - kEnd);
}

}  // namespace

void AclBlock::check(Findings &findings) const {
  findings.each("templates", templates_, [&](const AclTemplate &codes, size_t) {
    findings.each_at_most("codes", codes, kMaxFieldType);
  });
  findings.each("selectors", selectors_, [&](const AclSelector &words, size_t) {
    findings.each_at_most("words", words, kAclTemplates - 1);
  });
  findings.each_at_most("misses", misses_, CHIP_ACL_MISS_DROP);
  findings.is("unused", unused_, 0);
  findings.each("rules", rules_, [&](const AclRule &rule, size_t number) {
    check_rule(findings, rule, number == VCHIP_ACL_RULES - 1);
  });
  // The words of an action are whatever was set.
  findings.each("actions", actions_, [&](const chip_acl_action &action, size_t number) {
    findings.any("word", action.word);
    if (rules_[number].has_action == 0) findings.zero("words", action);
  });
}

}  // namespace vchip
