// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_PORT_SPEED_CODE_H
#define SWCTL_SRC_PORT_SPEED_CODE_H

#include <swctl/port.h>

namespace swctl {

// The SDK's speed codes.
enum SpeedCode : uint32_t { code_10, code_100, code_1000, code_10000, code_unknown };

constexpr uint32_t generic_speed(uint32_t code) {
  switch (code) {
    case code_10: return USER_SPEED_10;
    case code_100: return USER_SPEED_100;
    case code_1000: return USER_SPEED_1000;
    case code_10000: return USER_SPEED_10000;
    default: return USER_SPEED_UNKNOWN;
  }
}

constexpr uint32_t speed_code(uint32_t generic) {
  switch (generic) {
    case USER_SPEED_10: return code_10;
    case USER_SPEED_100: return code_100;
    case USER_SPEED_1000: return code_1000;
    case USER_SPEED_10000: return code_10000;
    default: return code_unknown;
  }
}

}  // namespace swctl

#endif
