// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_ACL_EACH_H
#define SWCTL_SHELL_ACL_EACH_H

#include <cstdint>
#include <functional>
#include <vector>

namespace swsh {

// Takes a step with each number in turn. A step that throws a CommandError ends
// it, and the error says with which numbers all went well.
void for_each_number(const std::vector<int64_t> &numbers, const std::function<void(int64_t)> &step);

}  // namespace swsh

#endif
