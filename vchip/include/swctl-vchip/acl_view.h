// SPDX-License-Identifier: MIT
/**
 * @file acl_view.h
 * @brief A view of access-control rules, meters and their counters.
 *        See view.h. A rule, meter or counter that does not exist throws
 *        std::out_of_range.
 */
#ifndef SWCTL_VCHIP_ACL_VIEW_H
#define SWCTL_VCHIP_ACL_VIEW_H

#include <swctl/types.h>

#include <string>
#include <vector>

namespace vchip {

// One match field that was written. Numbers are in the machine's byte order.
struct AclFieldView {
  uint32_t field;
  std::string name;
  std::vector<uint8_t> data;
  std::vector<uint8_t> mask;
  std::string text;  // "outer vlan 10 mask 0xfff"

  bool operator==(const AclFieldView &) const = default;
};

struct AclRuleView {
  int32_t rule;
  bool used;  // holds anything at all
  bool valid;
  bool joined;  // with the next rule
  std::vector<AclFieldView> match;
  std::vector<uint32_t> action;      // its 43 words
  std::vector<std::string> actions;  // what they say: "drop", "meter 3"

  bool operator==(const AclRuleView &) const = default;
};
SWCTL_API AclRuleView acl_rule(uint32_t unit, int32_t rule);
// Every rule that holds anything, by rising number.
SWCTL_API std::vector<AclRuleView> acl_rules(uint32_t unit);

// What gives rules their form, and what becomes of a frame without a rule.
struct AclFormView {
  std::vector<std::vector<uint32_t>> templates;  // field types
  std::vector<std::vector<uint32_t>> selectors;  // three words each
  std::vector<uint32_t> misses;                  // by chip port

  bool operator==(const AclFormView &) const = default;
};
SWCTL_API AclFormView acl_form(uint32_t unit);

struct MeterView {
  bool enabled;
  uint32_t rate;
  uint32_t burst_slot;
  uint32_t mode;

  bool operator==(const MeterView &) const = default;
};
SWCTL_API MeterView meter(uint32_t unit, uint32_t meter);
// The sizes of the two burst slots.
SWCTL_API std::vector<uint32_t> burst_sizes(uint32_t unit);

struct AclCountView {
  uint64_t packets;
  uint64_t bytes;

  bool operator==(const AclCountView &) const = default;
};
SWCTL_API AclCountView acl_count(uint32_t unit, uint32_t counter);

}  // namespace vchip

#endif
