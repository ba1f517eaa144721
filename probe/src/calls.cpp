// SPDX-License-Identifier: MIT
// The interposers of every listed call, and the table of all calls.
#include <swctl/platform/adapter.h>
#include <swctl/platform/sdk.h>

#include "interpose.h"
#include "log_calls.h"

// The order of these lines has a meaning.
// clang-format off
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) SWPROBE_INTERPOSE(name, __VA_ARGS__)
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
// clang-format on

namespace swprobe {

std::span<Site *const> known_calls() {
  static constinit Site *const kSites[] = {
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) SWPROBE_SITE(name)
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
      &log_site,
      &trace_get_site,
      &trace_add_site,
  };
  return kSites;
}

}  // namespace swprobe
