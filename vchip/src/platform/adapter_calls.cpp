// SPDX-License-Identifier: MIT
// The adapter's numbering of interfaces.
#include <swctl-vchip/vchip.h>
#include <swctl/platform/adapter.h>

#include "chip/chip.h"
#include "common/board.h"

int32_t adp_intf_2_phy_id(int32_t interface) {
  vchip::Locked chip;
  return chip ? vchip::port_of(interface) : VCHIP_NO_INTERFACE;
}

int32_t adp_phy_2_intf_id(int32_t port) {
  vchip::Locked chip;
  return chip ? vchip::interface_of(port) : VCHIP_NO_INTERFACE;
}
