// SPDX-License-Identifier: MIT
#include "log_calls.h"

#include <swctl/platform/log.h>

#include <cstdarg>
#include <cstdio>
#include <string>

#include "interpose.h"

namespace swprobe {
namespace {

constexpr ArgumentInfo text_info(std::string_view name) {
  return info_of<char>(name, Direction::ref, "1", Form::text);
}

constexpr ArgumentInfo kLogArguments[] = {
    info_of<int32_t>("level", Direction::value, "1", Form::dec),
    info_of<int32_t>("option", Direction::value, "1", Form::dec),
    text_info("tag"),
    text_info("text"),
};
constexpr ArgumentInfo kTraceAddArguments[] = {text_info("location"), text_info("message")};

std::string formatted(const char *format, va_list values) {
  va_list again;
  va_copy(again, values);
  const int size = std::vsnprintf(nullptr, 0, format, again);
  va_end(again);
  if (size < 0) return format;
  std::string text(static_cast<size_t>(size), '\0');
  std::vsnprintf(text.data(), text.size() + 1, format, values);
  return text;
}

}  // namespace

constinit Site log_site{"Log_logging_func", kLogArguments, false};
constinit Site trace_get_site{"sys_trace_get", {}, true};
constinit Site trace_add_site{"sys_trace_add_log", kTraceAddArguments, false};

}  // namespace swprobe

using swprobe::Address;
using swprobe::Observation;

// The values of an ellipsis cannot be handed on, so the text is made here.
void Log_logging_func(int32_t level, int32_t option, const char *tag, const char *format, ...) {
  va_list values;
  va_start(values, format);
  const std::string text = swprobe::formatted(format, values);
  va_end(values);

  const Address addresses[] = {{&level, 1}, {&option, 1}, {tag, 1}, {text.c_str(), 1}};
  Observation observation(swprobe::log_site, addresses);
  const auto next = observation.next<decltype(&Log_logging_func)>();
  if (next != nullptr) next(level, option, tag, "%s", text.c_str());
  observation.finish(0);
}

int32_t sys_trace_get(void) {
  const auto way = swprobe::idle_way<decltype(&sys_trace_get)>(swprobe::trace_get_site);
  if (way != nullptr) return way();
  Observation observation(swprobe::trace_get_site, {});
  const auto next = observation.next<decltype(&sys_trace_get)>();
  return observation.finish(next == nullptr ? -1 : next());
}

void sys_trace_add_log(const char *location, const char *message) {
  const Address addresses[] = {{location, 1}, {message, 1}};
  Observation observation(swprobe::trace_add_site, addresses);
  const auto next = observation.next<decltype(&sys_trace_add_log)>();
  if (next != nullptr) next(location, message);
  observation.finish(0);
}
