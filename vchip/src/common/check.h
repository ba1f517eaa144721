// SPDX-License-Identifier: MIT
// Looks at arguments. Each answers 0 or the result of a call that got such an
// argument. A call lists them in the order port, addresses, values.
#ifndef VCHIP_COMMON_CHECK_H
#define VCHIP_COMMON_CHECK_H

#include <swctl-vchip/vchip.h>

#include <initializer_list>

#include "common/frame_action.h"
#include "common/sound.h"

namespace vchip {

// The first that is not 0.
constexpr int32_t first_fault(std::initializer_list<int32_t> checks) {
  for (const int32_t check : checks)
    if (check != 0) return check;
  return 0;
}

constexpr int32_t on_port(int32_t port) {
  return port >= 0 && port < VCHIP_PORTS ? 0 : VCHIP_E_PORT;
}

// A port with a socket on the box, a transceiver and a cable.
constexpr int32_t on_front_port(int32_t port) {
  return port == VCHIP_CPU_PORT ? VCHIP_E_CPU_PORT : on_port(port);
}

template <typename... Pointers>
constexpr int32_t not_null(const Pointers *...pointers) {
  return ((pointers != nullptr) && ...) ? 0 : VCHIP_E_NULL;
}

constexpr int32_t at_most(uint32_t value, uint32_t limit) {
  return value <= limit ? 0 : VCHIP_E_VALUE;
}

// An index into a table of `size` entries.
constexpr int32_t below(uint32_t index, uint32_t size) {
  return index < size ? 0 : VCHIP_E_INDEX;
}

// A VLAN.
constexpr int32_t on_vlan(uint32_t vid) {
  return vid >= kFirstVlan && vid <= kLastVlan ? 0 : VCHIP_E_VALUE;
}

// Any number that a tag or a table entry has room for.
constexpr int32_t on_vlan_id(uint32_t vid) {
  return at_most(vid, kVlanIds - 1);
}

constexpr int32_t is_frame_action(uint32_t action) {
  return at_most(action, kLastFrameAction);
}

// A mask of ports; one for a port that the unit does not have is refused.
constexpr int32_t on_ports(uint32_t mask) {
  return is_ports(mask) ? 0 : VCHIP_E_PORT;
}

constexpr int32_t flag(uint32_t value) {
  return at_most(value, 1);
}

}  // namespace vchip

#endif
