// SPDX-License-Identifier: MIT
// The platform's log and operation trace.
#include <swctl-vchip/vchip.h>
#include <swctl/platform/log.h>

#include <cstdarg>
#include <cstdio>
#include <string>
#include <syslog.h>
#include <vector>

#include "chip/chip.h"
#include "common/standard_error.h"
#include "platform/environment.h"

namespace {

std::string format_line(const char *format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  const int length = vsnprintf(nullptr, 0, format, again);
  va_end(again);
  if (length < 0) return format;
  std::vector<char> text(static_cast<size_t>(length) + 1);
  vsnprintf(text.data(), text.size(), format, arguments);
  return text.data();
}

void write_log(int32_t level, const char *tag, const std::string &text) {
  const std::string subject = tag == nullptr ? "" : std::string(tag) + ": ";
  switch (vchip::log_target()) {
    case vchip::LogTarget::standard_error: return vchip::write_error_line(subject + text);
    case vchip::LogTarget::syslog:
      return syslog(static_cast<int>(level) & LOG_PRIMASK, "%s%s", subject.c_str(), text.c_str());
    case vchip::LogTarget::none: return;
  }
}

// Runs step(platform) as one locked step, unless there is no chip.
template <typename Step>
int32_t change_platform(Step step) {
  vchip::Locked chip;
  if (!chip) return chip.fault();
  vchip::Writing mark(chip.state(), vchip::kChanging);
  step(chip.state().platform);
  return 0;
}

}  // namespace

void Log_logging_func(int32_t level, int32_t, const char *tag, const char *format, ...) {
  if (format == nullptr) return;
  va_list arguments;
  va_start(arguments, format);
  // Before the lock is taken: a reader of the log may be slow.
  write_log(level, tag, format_line(format, arguments));
  va_end(arguments);
  change_platform([](vchip::PlatformBlock &platform) { platform.count_line(); });
}

int32_t sys_trace_get(void) {
  vchip::Locked chip;
  return chip ? chip.state().platform.trace() : 0;
}

void sys_trace_add_log(const char *location, const char *message) {
  if (location == nullptr || message == nullptr) return;
  change_platform([=](vchip::PlatformBlock &platform) { platform.add_record(location, message); });
}

int32_t vchip_trace_set(int32_t enable) {
  return change_platform([=](vchip::PlatformBlock &platform) { platform.set_trace(enable); });
}
