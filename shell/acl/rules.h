// SPDX-License-Identifier: MIT
// Rules as the chip has them, where its platform can read them.
#ifndef SWCTL_SHELL_ACL_RULES_H
#define SWCTL_SHELL_ACL_RULES_H

#include <swctl/platform/field_read.h>

#include <functional>
#include <vector>

namespace swsh {

using RuleVisit = std::function<void(const swctl_platform_acl_rule &rule)>;

// Calls visit() for every rule that holds anything, by rising number. Throws a
// CommandError of status kRefused if the platform cannot tell or refuses.
void each_rule(uint32_t unit, const RuleVisit &visit);

// Throws there_is_no() for rules among these that hold nothing. Where the
// platform cannot tell, all are taken to be there.
void expect_rules(uint32_t unit, const std::vector<int64_t> &rules);

// Whether the platform says that a rule is valid, matches something or does
// something; false also where it cannot say.
bool is_in_use(uint32_t unit, int32_t rule);

// The same of a rule that was read: a template and a partner alone are the
// form of an empty rule.
bool is_in_use(const swctl_platform_acl_rule &rule);

}  // namespace swsh

#endif
