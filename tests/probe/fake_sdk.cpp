// SPDX-License-Identifier: MIT
// A platform made from the lists of calls. Every call writes 7, 8, 9... to its
// outputs and answers 0; with 99 as its first argument it answers -1002 and
// writes nothing.
#include <swctl/platform/adapter.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <type_traits>

namespace {

template <class First, class... Rest>
bool is_refused([[maybe_unused]] First first, Rest...) {
  if constexpr (std::is_integral_v<First>) {
    return first == First{99};
  } else {
    return false;
  }
}

template <class T>
void fill(T *output, size_t count, int &value) {
  if (output == nullptr) return;
  for (size_t i = 0; i < count; ++i) {
    if constexpr (std::is_integral_v<T>) {
      output[i] = static_cast<T>(value++);
    } else {
      std::memset(&output[i], value++, sizeof(T));
    }
  }
}

}  // namespace

#define FILL(tuple) FILL_ tuple
#define FILL_(direction, type, name, count, form) FILL_##direction(name, count)
#define FILL_val(name, count) (void)name
#define FILL_ref(name, count) (void)name
#define FILL_out(name, count) fill(name, static_cast<size_t>(count), fake_value)
#define FILL_upd(name, count) fill(name, static_cast<size_t>(count), fake_value)

// The order of these lines has a meaning.
// clang-format off
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...)                                   \
  int32_t name(SWCTL_PARAMETERS(__VA_ARGS__)) {                 \
    [[maybe_unused]] int fake_value = 7;                        \
    if (is_refused(SWCTL_ARGUMENTS(__VA_ARGS__))) return -1002; \
    SWCTL_EACH(FILL, __VA_ARGS__);                              \
    return 0;                                                   \
  }
#include <swctl/platform/calls/adapter.def>
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
// clang-format on

void Log_logging_func(int32_t level, int32_t option, const char *tag, const char *format, ...) {
  std::printf("log %d %d %s: ", static_cast<int>(level), static_cast<int>(option), tag);
  va_list values;
  va_start(values, format);
  std::vprintf(format, values);
  va_end(values);
}

int32_t sys_trace_get(void) {
  return 3;
}

void sys_trace_add_log(const char *location, const char *message) {
  std::printf("operation %s %s\n", location, message);
}

const char *swctl_platform_result_text(int32_t result) {
  return result == -1002 ? "no such port on the unit" : nullptr;
}
