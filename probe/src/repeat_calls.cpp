// SPDX-License-Identifier: MIT
// Every call that the probe knows, made again from its record.
#include <swctl/platform/adapter.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <iterator>
#include <stdexcept>

#include "interpose.h"
#include "repeat.h"

// The order of these lines has a meaning.
// clang-format off
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) \
  static std::vector<swprobe::Address> swprobe_addresses_##name(SWCTL_PARAMETERS(__VA_ARGS__)) { \
    return {SWCTL_EACH(SWPROBE_ADDRESS, __VA_ARGS__)}; \
  } \
  static void swprobe_repeat_##name(const swprobe::Site &site, const swprobe::Call &recorded, \
                                    bool make) { \
    swprobe::repeat_call(&name, &swprobe_addresses_##name, site.arguments, recorded, make); \
  }
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
// clang-format on

namespace swprobe {
namespace {

void repeat_log(const Site &site, const Call &recorded, bool make) {
  int32_t level = 0;
  int32_t option = 0;
  fill(site.arguments[0], {&level, 1}, recorded);
  fill(site.arguments[1], {&option, 1}, recorded);
  const char *tag = text_of("tag", recorded);
  const char *text = text_of("text", recorded);
  if (make) Log_logging_func(level, option, tag, "%s", text == nullptr ? "" : text);
}

void repeat_trace_get(const Site &, const Call &, bool make) {
  if (make) sys_trace_get();
}

void repeat_trace_add(const Site &, const Call &recorded, bool make) {
  const char *location = text_of("location", recorded);
  const char *message = text_of("message", recorded);
  if (make) sys_trace_add_log(location, message);
}

struct Repeater {
  std::string_view name;
  void (*repeat)(const Site &site, const Call &recorded, bool make);
};

constexpr Repeater kRepeaters[] = {
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) {#name, swprobe_repeat_##name},
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
    {"Log_logging_func", repeat_log},
    {"sys_trace_get", repeat_trace_get},
    {"sys_trace_add_log", repeat_trace_add},
};

void repeat_or_check(const Call &recorded, bool make) {
  const Site *site = find_call(recorded.name);
  for (const Repeater &repeater : kRepeaters)
    if (site != nullptr && repeater.name == recorded.name)
      return repeater.repeat(*site, recorded, make);
  throw std::invalid_argument("no call is named '" + recorded.name + "'");
}

}  // namespace

void expect_repeatable(const Call &recorded) {
  repeat_or_check(recorded, false);
}

void repeat(const Call &recorded) {
  repeat_or_check(recorded, true);
}

}  // namespace swprobe
