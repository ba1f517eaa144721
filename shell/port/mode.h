// SPDX-License-Identifier: MIT
// What a port runs at, forced, negotiated or advertised.
#ifndef SWCTL_SHELL_PORT_MODE_H
#define SWCTL_SHELL_PORT_MODE_H

#include "chip/ports.h"

namespace swsh {

// As the library says, of the port's own unit: the library itself reads on unit
// 0 what a port advertises.
uint32_t read_speed(const Context &context, const Port &port);
uint32_t read_duplex(const Context &context, const Port &port);
bool read_pause(const Context &context, const Port &port);

}  // namespace swsh

#endif
