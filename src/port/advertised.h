// SPDX-License-Identifier: MIT
#ifndef SWCTL_SRC_PORT_ADVERTISED_H
#define SWCTL_SRC_PORT_ADVERTISED_H

#include <swctl/platform/sdk.h>

#include <cstdio>

namespace swctl {

// Reads what a port advertises, on unit 0 for every caller: programs have come
// to depend on it. A failure is reported in the name of `function`.
inline int32_t read_advertised(const char *function, int32_t port, uint32_t *ability) {
  const int32_t result = rtk_port_phyAutoNegoAbility_get(0, port, ability);
  if (result < 0) fprintf(stderr, "%s:get port autonego ability failed\n", function);
  return result;
}

}  // namespace swctl

#endif
