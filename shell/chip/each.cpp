// SPDX-License-Identifier: MIT
#include "chip/each.h"

#include "number_list.h"

namespace swsh {

void fail_after(const CommandError &error, const std::vector<int64_t> &done) {
  if (done.empty()) throw error;
  throw with_note(error, "already done: " + number_list_text(done));
}

}  // namespace swsh
