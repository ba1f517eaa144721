// SPDX-License-Identifier: MIT
// Whether the platform can be used: a recording always can.
#include <swctl/platform/log.h>

#include <dlfcn.h>

#include "session.h"

const char *swctl_platform_open(void) {
  if (swprobe::Session::get().answers()) return nullptr;
  using Open = const char *(*)();
  const auto next = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "swctl_platform_open"));
  return next == nullptr ? nullptr : next();
}
