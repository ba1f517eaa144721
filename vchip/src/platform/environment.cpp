// SPDX-License-Identifier: MIT
#include "platform/environment.h"

#include <atomic>
#include <string>

#include "common/standard_error.h"
#include "common/variable.h"

namespace vchip {
namespace {

LogTarget read_log_target() {
  const std::string value = variable("VCHIP_LOG");
  if (value == "syslog") return LogTarget::syslog;
  if (value == "none") return LogTarget::none;
  if (!value.empty() && value != "stderr")
    write_error_line("swctl-vchip: VCHIP_LOG=" + value +
                     ": expected stderr, syslog or none; logging to standard error");
  return LogTarget::standard_error;
}

}  // namespace

LogTarget log_target() {
  static const LogTarget target = read_log_target();
  return target;
}

bool trace_at_power_on() {
  static std::atomic<bool> complained = false;
  const std::string value = variable("VCHIP_TRACE");
  if (value == "1") return true;
  if (!value.empty() && value != "0" && !complained.exchange(true))
    write_error_line("swctl-vchip: VCHIP_TRACE=" + value + ": expected 0 or 1; tracing is off");
  return false;
}

}  // namespace vchip
