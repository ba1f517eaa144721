// SPDX-License-Identifier: MIT
// Every call that the probe knows, made again from its record.
#include <swctl/platform/adapter.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <stdexcept>

#include "interpose.h"
#include "repeat.h"

// The order of these lines has a meaning.
// clang-format off
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) \
  static void swprobe_addresses_##name(swprobe::Address *swprobe_places, \
                                       SWCTL_PARAMETERS(__VA_ARGS__)) { \
    const swprobe::Address swprobe_all[] = {SWCTL_EACH(SWPROBE_ADDRESS, __VA_ARGS__)}; \
    std::copy(std::begin(swprobe_all), std::end(swprobe_all), swprobe_places); \
  } \
  static swprobe::PreparedCall *swprobe_prepare_##name(const swprobe::Site &site, \
                                                      const swprobe::Call &recorded) { \
    return swprobe::new_prepared_call(&name, &swprobe_addresses_##name, site.arguments, recorded); \
  }
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
// clang-format on

namespace swprobe {
namespace {

const char *pointer_to(const Text &text) {
  return text ? text->c_str() : nullptr;
}

// One of the calls that are in no list.
template <class Body>
class PreparedOtherCall : public PreparedCall {
 public:
  explicit PreparedOtherCall(Body body) : body_(std::move(body)) {}
  void make() override { body_(); }

 private:
  Body body_;
};

PreparedCall *prepare_log(const Site &site, const Call &recorded) {
  int32_t level = 0;
  int32_t option = 0;
  fill(site.arguments[0], {&level, 1}, recorded);
  fill(site.arguments[1], {&option, 1}, recorded);
  const Text tag = text_of("tag", recorded);
  const Text text = text_of("text", recorded);
  return new PreparedOtherCall(
      [=] { Log_logging_func(level, option, pointer_to(tag), "%s", text.value_or("").c_str()); });
}

PreparedCall *prepare_trace_get(const Site &, const Call &) {
  return new PreparedOtherCall([] { sys_trace_get(); });
}

PreparedCall *prepare_trace_add(const Site &, const Call &recorded) {
  const Text location = text_of("location", recorded);
  const Text message = text_of("message", recorded);
  return new PreparedOtherCall(
      [=] { sys_trace_add_log(pointer_to(location), pointer_to(message)); });
}

struct Preparer {
  std::string_view name;
  PreparedCall *(*prepare)(const Site &site, const Call &recorded);  // the caller owns it
};

constexpr Preparer kPreparers[] = {
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) {#name, swprobe_prepare_##name},
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
    {"Log_logging_func", prepare_log},
    {"sys_trace_get", prepare_trace_get},
    {"sys_trace_add_log", prepare_trace_add},
};

}  // namespace

std::function<void()> prepare(const Call &recorded) {
  const Site *site = find_call(recorded.name);
  for (const Preparer &preparer : kPreparers)
    if (site != nullptr && preparer.name == recorded.name) {
      const std::shared_ptr<PreparedCall> call(preparer.prepare(*site, recorded));
      return [call] { call->make(); };
    }
  throw std::invalid_argument("no call is named '" + recorded.name + "'");
}

void repeat(const Call &recorded) {
  prepare(recorded)();
}

}  // namespace swprobe
