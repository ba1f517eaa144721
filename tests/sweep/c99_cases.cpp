// SPDX-License-Identifier: MIT
// The argument lists of the C99 program, which calls every exported function:
// each of its calls becomes a subject, one after the other on one chip.
#include <swctl/platform/port_records.h>
#include <swctl/swctl.h>

#include <cstdio>
#include <cstring>
#include <unistd.h>

#include "cases.h"
#include "sweep.h"

// What stands for the header of that program.
#define SWCTL_TESTS_EVERY_FUNCTION_H
#define CALL(function, arguments) CALL_FOR(0, function, arguments)
#define CALL_FOR(result, function, arguments)                                                  \
  sweep_once({#function, "", result, [&] { return static_cast<int32_t>(function arguments); }, \
              sweep::outputs_of arguments})
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

enum { lead = 1, unit = 1, port = 24 };

// The step moves the caller's index on: it has arguments of its own.
static void sweep_once(const sweep::Subject &subject) {
  if (subject.function == "user_netlink_mac_nextValidAddr_get") {
    subject.call();
  } else {
    sweep::sweep(subject);
  }
}
// It is the other program's to judge what is read.
static void expect_true(const char *, int) {}

namespace c99_field {
#include "c99/field.c"
}
namespace c99_frame {
#include "c99/frame.c"
}
namespace c99_l2 {
#include "c99/l2.c"
}
namespace c99_mcast {
#include "c99/mcast.c"
}
namespace c99_mcast_ip {
#include "c99/mcast_ip.c"
}
namespace c99_mirror_trunk {
#include "c99/mirror_trunk.c"
}
namespace c99_port {
#include "c99/port.c"
}
namespace c99_qos {
#include "c99/qos.c"
}
namespace c99_stp {
#include "c99/stp.c"
}
namespace c99_vlan {
#include "c99/vlan.c"
}

namespace sweep {

void c99_cases() {
  for (void (*const family)() :
       {c99_field::call_field, c99_frame::call_frame, c99_l2::call_l2, c99_mcast::call_mcast,
        c99_mcast_ip::call_mcast_ip, c99_mirror_trunk::call_mirror_trunk, c99_port::call_port,
        c99_qos::call_qos, c99_stp::call_stp, c99_vlan::call_vlan}) {
    start_over();
    family();
  }
}

}  // namespace sweep
