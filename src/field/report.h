// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_FIELD_REPORT_H
#define SWCTL_SRC_FIELD_REPORT_H

#include <cstdint>
#include <cstdio>

namespace swctl {

// The line numbers are part of the text that programs look for; they do not
// follow the source.
inline void report_failed_call(const char *function, int line, int32_t result) {
  printf("%s:[%05d] call api failed, ret=%d \n", function, line, result);
}

}  // namespace swctl

#endif
