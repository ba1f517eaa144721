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

}  // namespace swsh
