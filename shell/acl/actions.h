// SPDX-License-Identifier: MIT
// What a rule can do, by name.
#ifndef SWCTL_SHELL_ACL_ACTIONS_H
#define SWCTL_SHELL_ACL_ACTIONS_H

#include <swctl/platform/field_records.h>

#include <string>
#include <vector>

#include "command/table.h"

namespace swsh {

// One action, ready to be added.
struct PlannedAction {
  std::string word;  // as it was written
  uint32_t action;
  uint32_t param0;
  uint32_t param1;
};

// The value of the keyword `action`: names with commas between, each with its
// parameters behind colons, "meter:3,priority:5".
Parameter action_parameter();

// Throws a CommandError of wrong usage.
std::vector<PlannedAction> actions_of(const std::string &word);

// Throws a CommandError that names the action if the chip refuses it.
void add_action(const PlannedAction &action, uint32_t unit, int32_t rule);

// The actions that a record holds, in the same words. Words of the record that
// belong to none of them are "w26=1".
std::vector<std::string> action_words(const chip_acl_action &record);

}  // namespace swsh

#endif
