// SPDX-License-Identifier: MIT
// What a rule can do, by name.
#ifndef SWCTL_SHELL_ACL_ACTIONS_H
#define SWCTL_SHELL_ACL_ACTIONS_H

#include <swctl/platform/field_records.h>

#include <optional>
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
// parameters after colons, "meter:3,priority:5".
Parameter action_parameter();

// Throws a CommandError of wrong usage.
std::vector<PlannedAction> actions_of(const std::string &word);

// The same actions as actions_text() writes those that were read back: by name, in
// the order of the chip's words.
std::string planned_text(const std::vector<PlannedAction> &actions);

// Throws a CommandError that names the action if the chip refuses it.
void add_action(const PlannedAction &action, uint32_t unit, int32_t rule);

// An action that was read back.
struct ReadAction {
  std::string name;
  std::optional<int64_t> parameter;
  std::optional<int64_t> chip_port;  // of an action that names a port
};

// The actions that a record holds. Words of the record that belong to none of
// them have names such as w26.
std::vector<ReadAction> actions_in(const chip_acl_action &record);

// As action_parameter() takes them; a port without an interface is p27.
std::string actions_text(const std::vector<ReadAction> &actions);
std::vector<Record> action_records(const std::vector<ReadAction> &actions);

}  // namespace swsh

#endif
