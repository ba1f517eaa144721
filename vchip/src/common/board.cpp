// SPDX-License-Identifier: MIT
#include "common/board.h"

namespace vchip {
namespace {

// Interfaces 1 to 24 sit on the ports one below; the two combo sockets use
// every second of the last four ports.
constexpr int32_t kCopperInterfaces = 24;
constexpr int32_t kFirstComboInterface = 25;
constexpr int32_t kFirstComboPort = 24;
constexpr int32_t kSecondComboInterface = 26;
constexpr int32_t kSecondComboPort = 26;

}  // namespace

int32_t port_of(int32_t interface) {
  if (interface == VCHIP_CPU_INTERFACE) return VCHIP_CPU_PORT;
  if (interface == kFirstComboInterface) return kFirstComboPort;
  if (interface == kSecondComboInterface) return kSecondComboPort;
  if (interface >= 1 && interface <= kCopperInterfaces) return interface - 1;
  return VCHIP_NO_INTERFACE;
}

int32_t interface_of(int32_t port) {
  if (port == VCHIP_CPU_PORT) return VCHIP_CPU_INTERFACE;
  if (port == kFirstComboPort) return kFirstComboInterface;
  if (port == kSecondComboPort) return kSecondComboInterface;
  if (port >= 0 && port < kCopperInterfaces) return port + 1;
  return VCHIP_NO_INTERFACE;
}

bool is_combo(int32_t port) {
  return port == kFirstComboPort || port == kSecondComboPort;
}

}  // namespace vchip
