// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_PORT_REPORT_H
#define SWCTL_SRC_PORT_REPORT_H

#include <cstdint>
#include <cstdio>

namespace swctl {

// Hands an SDK read's result on, after the line that the port functions print
// for a failed one.
inline int32_t report_read(int32_t result) {
  if (result < 0) printf("rtk get error[%d]\n", result);
  return result;
}

}  // namespace swctl

#endif
