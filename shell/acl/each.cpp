// SPDX-License-Identifier: MIT
#include "acl/each.h"

#include "fault.h"
#include "number_list.h"

namespace swsh {

void for_each_number(const std::vector<int64_t> &numbers,
                     const std::function<void(int64_t)> &step) {
  std::vector<int64_t> done;
  try {
    for (const int64_t number : numbers) {
      step(number);
      done.push_back(number);
    }
  } catch (const CommandError &error) {
    Fault fault = error.fault();
    if (!done.empty()) fault.message += "; already done: " + number_list_text(done);
    throw CommandError(fault);
  }
}

}  // namespace swsh
