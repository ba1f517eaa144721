// SPDX-License-Identifier: MIT
// What a rule can match, by keyword.
#ifndef SWCTL_SHELL_ACL_QUALIFIERS_H
#define SWCTL_SHELL_ACL_QUALIFIERS_H

#include <swctl/platform/field_read.h>

#include <string>
#include <vector>

#include "acl/match_value.h"
#include "command/table.h"
#include "output/record.h"

namespace swsh {

struct Qualifier;

// One condition, ready to be written.
struct Condition {
  const Qualifier *qualifier;
  MatchValue value;
};

// The keywords of all qualifiers, for the command table.
std::vector<Parameter> qualifier_parameters();

// The conditions among a command's arguments. Throws a CommandError of wrong
// usage; nothing has been written then.
std::vector<Condition> conditions_of(const Arguments &arguments);

// Throws a CommandError that names the field if the chip refuses it.
void write_condition(const Condition &condition, uint32_t unit, int32_t rule);

// The conditions as the words of match_record() of a rule that has them.
std::string conditions_text(const std::vector<Condition> &conditions);

// The conditions of a rule that was read back, keyword by keyword.
Record match_record(const swctl_platform_acl_rule &rule);

}  // namespace swsh

#endif
