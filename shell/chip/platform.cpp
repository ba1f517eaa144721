// SPDX-License-Identifier: MIT
#include "chip/platform.h"

#include <swctl/platform/log.h>

#include "chip/optional_call.h"
#include "fault.h"

namespace swsh {

void expect_platform() {
  auto *const open = SWSH_OPTIONAL_CALL(swctl_platform_open).find();
  const char *reason = open == nullptr ? nullptr : open();
  if (reason == nullptr) return;
  Fault fault;
  fault.status = kRefused;
  fault.message = reason;
  throw CommandError(fault);
}

std::optional<std::string> result_sentence(int32_t result) {
  auto *const text = SWSH_OPTIONAL_CALL(swctl_platform_result_text).find();
  const char *sentence = text == nullptr ? nullptr : text(result);
  if (sentence == nullptr) return std::nullopt;
  return sentence;
}

void expect_unit_zero(const Context &context, const std::string &word) {
  if (context.unit == 0) return;
  throw CommandError(wrong_usage((word.empty() ? "" : word + ' ') + "works on unit 0 alone",
                                 std::to_string(context.unit), {"unit 0"}));
}

}  // namespace swsh
