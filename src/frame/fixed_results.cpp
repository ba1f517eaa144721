// SPDX-License-Identifier: MIT
// Entry points that answer a constant, as lists per family. Each name is
// declared in its family's header, which says what it would mean on a device
// that had it.
#include <swctl/port.h>

#define ANSWERS_0(name)         \
  int32_t name(uint32_t, ...) { \
    return 0;                   \
  }

ANSWERS_0(user_port_master_get)
ANSWERS_0(user_port_master_set)
ANSWERS_0(user_port_stp_get)
ANSWERS_0(user_port_stp_set)
ANSWERS_0(user_port_bpdu_enable_get)
ANSWERS_0(user_port_bpdu_enable_set)
