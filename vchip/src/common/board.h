// SPDX-License-Identifier: MIT
// How the board numbers its sockets: logical interfaces against chip ports.
#ifndef VCHIP_COMMON_BOARD_H
#define VCHIP_COMMON_BOARD_H

#include <swctl-vchip/vchip.h>

#include <cstdint>

namespace vchip {

// VCHIP_NO_INTERFACE where there is none.
int32_t interface_of(int32_t port);
int32_t port_of(int32_t interface);

bool is_combo(int32_t port);

}  // namespace vchip

#endif
