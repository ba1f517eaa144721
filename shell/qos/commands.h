// SPDX-License-Identifier: MIT
// The branches of the object qos, a file each.
#ifndef SWCTL_SHELL_QOS_COMMANDS_H
#define SWCTL_SHELL_QOS_COMMANDS_H

#include <cstdint>
#include <string>
#include <vector>

#include "command/table.h"

namespace swsh {

Node qos_map_commands();
Node qos_dscp_commands();
Node qos_default_commands();
Node qos_trust_commands();
Node qos_schedule_commands();
Node qos_tag_commands();

// The eight weights of a USER_QOS_SCHEDULE_*, by queue; of one without weights all are 1.
// `words` is what was given for them, nullptr for nothing. Throws a CommandError that says
// what is wrong with it.
std::vector<uint32_t> schedule_weights(uint32_t schedule, const std::string *words);

// "priority 5", in a refusal.
std::string priority_text(int64_t priority);

// The numbers that a command names, or all from 0 to `last`.
std::vector<int64_t> chosen_or_all(const Arguments &arguments, const char *name, int64_t last);

}  // namespace swsh

#endif
