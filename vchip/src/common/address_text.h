// SPDX-License-Identifier: MIT
// Addresses as people write them.
#ifndef VCHIP_COMMON_ADDRESS_TEXT_H
#define VCHIP_COMMON_ADDRESS_TEXT_H

#include <cstdint>
#include <string>

namespace vchip {

// "02:00:5e:00:00:01"
std::string mac_text(const uint8_t *mac);
// "192.0.2.1"; the address is a number in the order of this machine.
std::string ip4_text(uint32_t address);
// "2001:db8::1", for 16 bytes in network order.
std::string ip6_text(const uint8_t *address);

}  // namespace vchip

#endif
