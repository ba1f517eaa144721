// SPDX-License-Identifier: MIT
// How a port is called: the number on the box, or p27 where there is none.
#ifndef VCHIPCTL_PORT_NAMES_H
#define VCHIPCTL_PORT_NAMES_H

#include <cstdint>
#include <string>
#include <vector>

#include "os/json.h"

namespace vchipctl {

// The number on the box; -1 for none. The board's, so the same for every chip.
int32_t interface_of(int32_t port);

// "3", "0" for the CPU port, "p27".
std::string port_name(int32_t port);
// 3, 0 or "p27".
os::Json port_json(int32_t port);

// Every port in the order of their names: by number, then those without one.
const std::vector<int32_t> &ports_by_name();
// The place of a port in that order.
size_t port_rank(int32_t port);

}  // namespace vchipctl

#endif
