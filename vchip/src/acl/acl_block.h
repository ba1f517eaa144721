// SPDX-License-Identifier: MIT
// The access-control rules of a unit, with the templates and selectors that
// give them their form.
#ifndef VCHIP_ACL_ACL_BLOCK_H
#define VCHIP_ACL_ACL_BLOCK_H

#include <swctl-vchip/vchip.h>
#include <swctl/platform/field_records.h>

#include <array>

#include "acl/acl_field.h"

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kAclTemplates = 8;
inline constexpr uint32_t kAclSelectors = 12;
inline constexpr uint32_t kAclSelectorWords = 3;
inline constexpr uint32_t kMaxFieldType = 63;

using AclTemplate = std::array<uint32_t, CHIP_ACL_TEMPLATE_FIELDS>;
using AclSelector = std::array<uint32_t, kAclSelectorWords>;

// The bytes of all match fields one after the other, in whole 64-bit words.
inline constexpr size_t kMatchBytes = (start_of_field(kAclFields.size()) + 7) / 8 * 8;

// What a rule matches: a frame whose bytes, laid out alike, equal the data in
// every bit that is 1 in the mask. Bytes of fields that were not written, and
// those at the end, are 0 in both.
struct AclRule {
  uint32_t valid;
  uint32_t joined;   // with the next rule
  uint32_t written;  // bit p: the field at place p of kAclFields
  uint32_t has_action;
  alignas(8) uint8_t data[kMatchBytes];
  alignas(8) uint8_t mask[kMatchBytes];

  bool is_used() const { return (valid | joined | written | has_action) != 0; }
  bool has_field(size_t place) const { return (written >> place & 1) != 0; }
  FieldValue field(size_t place) const {
    return {data + start_of_field(place), mask + start_of_field(place)};
  }
};

class AclBlock {
 public:
  static constexpr uint32_t kLayout = 3;
  void power_on() {}  // all zero
  void repair();
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  const AclTemplate &template_at(uint32_t index) const { return templates_[index]; }
  void set_template(uint32_t index, const AclTemplate &codes) { templates_[index] = codes; }
  const AclSelector &selector(uint32_t index) const { return selectors_[index]; }
  void set_selector(uint32_t index, const AclSelector &words) { selectors_[index] = words; }
  uint32_t miss(uint32_t port) const { return misses_[port]; }
  void set_miss(uint32_t port, uint32_t action) { misses_[port] = action; }

  const AclRule &rule(uint32_t number) const { return rules_[number]; }
  void write_field(uint32_t rule, size_t place, const uint8_t *data, const uint8_t *mask);
  void set_valid(uint32_t rule, bool valid) { rules_[rule].valid = valid; }
  void set_joined(uint32_t rule, bool joined) { rules_[rule].joined = joined; }
  // Zeroes for a rule without an action. The words are whatever was set, and
  // are checked where they are used.
  const chip_acl_action &action(uint32_t rule) const { return actions_[rule]; }
  void set_action(uint32_t rule, const chip_acl_action &action);
  // Match fields, actions and validity go; the template field and the joining
  // are the table's form and stay.
  void clear(uint32_t rule);

 private:
  void dump_rule(Dump &entry, uint32_t number) const;
  void dump_form(Dump &block) const;

  AclTemplate templates_[kAclTemplates];
  AclSelector selectors_[kAclSelectors];
  uint32_t misses_[VCHIP_PORTS];
  uint32_t unused_;
  AclRule rules_[VCHIP_ACL_RULES];
  chip_acl_action actions_[VCHIP_ACL_RULES];
};

}  // namespace vchip

#endif
