// SPDX-License-Identifier: MIT
// Whether the platform can be used: a recording always can.
#include <swctl/platform/log.h>

#include "next_library.h"
#include "session.h"

const char *swctl_platform_open(void) {
  if (swprobe::Session::get().answers()) return nullptr;
  using Open = const char *(*)();
  const auto next = reinterpret_cast<Open>(swprobe::find_after_probe("swctl_platform_open"));
  return next == nullptr ? nullptr : next();
}
