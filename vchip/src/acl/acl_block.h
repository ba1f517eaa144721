// SPDX-License-Identifier: MIT
// The access-control rules of a unit, with the templates and selectors that
// give them their form.
#ifndef VCHIP_ACL_ACL_BLOCK_H
#define VCHIP_ACL_ACL_BLOCK_H

#include <swctl-vchip/acl_view.h>
#include <swctl-vchip/vchip.h>
#include <swctl/platform/field_read.h>

#include <array>

#include "acl/acl_field.h"

namespace vchip {

class Dump;

inline constexpr uint32_t kAclTemplates = 8;
inline constexpr uint32_t kAclSelectors = 12;
inline constexpr uint32_t kAclSelectorWords = 3;
inline constexpr uint32_t kMaxFieldType = 63;

using AclTemplate = std::array<uint32_t, CHIP_ACL_TEMPLATE_FIELDS>;
using AclSelector = std::array<uint32_t, kAclSelectorWords>;

class AclBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void reset();
  void repair() {}  // what is half written is marked as not written
  void dump(const char *name, Dump &unit) const;

  const AclTemplate &template_at(uint32_t index) const { return templates_[index]; }
  void set_template(uint32_t index, const AclTemplate &codes) { templates_[index] = codes; }
  const AclSelector &selector(uint32_t index) const { return selectors_[index]; }
  void set_selector(uint32_t index, const AclSelector &words) { selectors_[index] = words; }
  uint32_t miss(uint32_t port) const { return misses_[port]; }
  void set_miss(uint32_t port, uint32_t action) { misses_[port] = action; }

  void write_field(uint32_t rule, size_t place, const uint8_t *data, const uint8_t *mask);
  void set_valid(uint32_t rule, bool valid) { rules_[rule].valid = valid; }
  void set_joined(uint32_t rule, bool joined) { rules_[rule].joined = joined; }
  chip_acl_action action(uint32_t rule) const;
  void set_action(uint32_t rule, const chip_acl_action &action);
  // Match fields, actions and validity go; the template field and the joining
  // are the table's form and stay.
  void clear(uint32_t rule);

  AclRuleView view(uint32_t rule) const;
  // The first rule from `from` on that holds anything; number -1 for none.
  swctl_platform_acl_rule next(int32_t from) const;

 private:
  struct Rule {
    uint32_t valid;
    uint32_t joined;
    uint32_t has_action;
    uint32_t written;  // bit p: the field at place p of kAclFields
    FieldValue fields[kAclFields.size()];
    chip_acl_action action;
  };

  static bool is_used(const Rule &rule);
  void dump_rule(Dump &entry, uint32_t number) const;
  void dump_form(Dump &block) const;

  AclTemplate templates_[kAclTemplates];
  AclSelector selectors_[kAclSelectors];
  uint32_t misses_[VCHIP_PORTS];
  Rule rules_[VCHIP_ACL_RULES];
};

}  // namespace vchip

#endif
