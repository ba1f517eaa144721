// SPDX-License-Identifier: MIT
// What follows a command after a bar in a session: "mac show | include vlan | count".
#ifndef SWCTL_SHELL_RUN_FILTER_H
#define SWCTL_SHELL_RUN_FILTER_H

#include <optional>
#include <string>
#include <vector>

#include "fault.h"
#include "output/record.h"

namespace swsh {

struct Filter {
  bool counts = false;  // else it includes what has the word
  std::string word = {};
};

// Takes the filters off the end of a command's words. A fault if one is none.
std::optional<Fault> take_filters(std::vector<std::string> &words, std::vector<Filter> &filters);

// The head of a table stays.
Answer filtered(Answer answer, const std::vector<Filter> &filters);

}  // namespace swsh

#endif
