// SPDX-License-Identifier: MIT
#include "chip/unit_zero.h"

#include "fault.h"

namespace swsh {

void expect_unit_zero(const Context &context, const std::string &word) {
  if (context.unit == 0) return;
  throw CommandError(wrong_usage((word.empty() ? "" : word + ' ') + "works on unit 0 alone",
                                 std::to_string(context.unit), {"unit 0"}));
}

}  // namespace swsh
