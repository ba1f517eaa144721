// SPDX-License-Identifier: MIT
// What two chips at the ends of a stream tell each other, as transceivers do in
// autonegotiation.
#ifndef VCHIPD_CABLE_H
#define VCHIPD_CABLE_H

#include <swctl-vchip/vchip.h>

#include <array>
#include <cstdint>
#include <optional>

namespace vchipd {

// A port as the other end of its cable sees it.
struct CableEnd {
  bool on = true;  // the port is switched on
  vchip_partner_t partner = {};

  bool operator==(const CableEnd &other) const {
    return on == other.on && partner.autonegotiation == other.partner.autonegotiation &&
           partner.ability == other.partner.ability;
  }
};

// That of a front port of the chip.
CableEnd cable_end(uint32_t unit, int32_t port);

// It travels as an extension of MAC control, which no station forwards and which one
// that does not know it drops.
inline constexpr uint32_t kCableFrameBytes = 60;
using CableFrame = std::array<uint8_t, kCableFrameBytes>;
CableFrame write_cable_frame(const CableEnd &end);
// Whether it may be one; asked for every frame.
inline bool may_be_cable_frame(const uint8_t *bytes, uint32_t length) {
  return length == kCableFrameBytes && bytes[12] == 0x88 && bytes[13] == 0x08;
}
// Nothing if it is another frame.
std::optional<CableEnd> read_cable_frame(const uint8_t *bytes, uint32_t length);

}  // namespace vchipd

#endif
