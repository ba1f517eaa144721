// SPDX-License-Identifier: MIT
// What the environment says about the platform's log and trace. A value that
// means nothing is complained about once and taken as the default.
#ifndef VCHIP_PLATFORM_ENVIRONMENT_H
#define VCHIP_PLATFORM_ENVIRONMENT_H

namespace vchip {

enum class LogTarget { standard_error, syslog, none };

// VCHIP_LOG, read once.
LogTarget log_target();

// VCHIP_TRACE, read whenever a chip is made or reset.
bool trace_at_power_on();

}  // namespace vchip

#endif
