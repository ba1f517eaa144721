// SPDX-License-Identifier: MIT
#include "cable.h"

#include <swctl-vchip/ability.h>
#include <swctl-vchip/view.h>

#include <algorithm>
#include <bit>
#include <iterator>

namespace vchipd {
namespace {

// MAC control to its group address, opcode EXTENSION of IEEE 802.3 annex 31C, and a
// name and version of our own.
constexpr uint8_t kHead[] = {0x01, 0x80, 0xC2, 0x00, 0x00, 0x01,  // to
                             0x02, 0x00, 0x00, 0x00, 0x00, 0x00,  // from
                             0x88, 0x08, 0xFF, 0xFE,              // type and opcode
                             0x02, 0x76, 0x63, 'v',  'c',  'h',  'i', 'p', 'd', 1};
constexpr size_t kOnAt = sizeof kHead;
constexpr size_t kNegotiatesAt = kOnAt + 1;
constexpr size_t kAbilityAt = kNegotiatesAt + 1;

// The one mode of a port that does not negotiate.
uint32_t forced_mode(const vchip::PortView &port) {
  constexpr uint32_t kModes[][2] = {{VCHIP_ABILITY_10_HALF, VCHIP_ABILITY_10_FULL},
                                    {VCHIP_ABILITY_100_HALF, VCHIP_ABILITY_100_FULL},
                                    {VCHIP_ABILITY_1000_HALF, VCHIP_ABILITY_1000_FULL}};
  if (port.forced_speed >= std::size(kModes)) return 0;
  return kModes[port.forced_speed][port.forced_duplex == VCHIP_DUPLEX_FULL ? 1 : 0];
}

// What a chip takes as a partner.
bool is_possible(const CableEnd &end) {
  const int modes = std::popcount(end.partner.ability & VCHIP_ABILITY_MODES);
  if ((end.partner.ability & ~VCHIP_ABILITY_ALL) != 0) return false;
  return end.partner.autonegotiation != 0 ? modes > 0 : modes == 1;
}

}  // namespace

CableEnd cable_end(uint32_t unit, int32_t port) {
  const vchip::PortView view = vchip::port(unit, port);
  const uint32_t ability = view.autonegotiation ? view.advertised : forced_mode(view);
  // A port without a mode can have no link.
  const bool on = view.admin && (ability & VCHIP_ABILITY_MODES) != 0;
  return {on, {view.autonegotiation ? 1u : 0u, ability}};
}

CableFrame write_cable_frame(const CableEnd &end) {
  CableFrame frame = {};
  std::copy(std::begin(kHead), std::end(kHead), frame.begin());
  frame[kOnAt] = end.on ? 1 : 0;
  frame[kNegotiatesAt] = end.partner.autonegotiation != 0 ? 1 : 0;
  for (size_t place = 0; place < 4; ++place)
    frame[kAbilityAt + place] = static_cast<uint8_t>(end.partner.ability >> (24 - 8 * place));
  return frame;
}

std::optional<CableEnd> read_cable_frame(const uint8_t *bytes, uint32_t length) {
  if (length != kCableFrameBytes || !std::equal(std::begin(kHead), std::end(kHead), bytes))
    return std::nullopt;
  CableEnd end = {bytes[kOnAt] != 0, {bytes[kNegotiatesAt], 0}};
  for (size_t place = 0; place < 4; ++place)
    end.partner.ability = end.partner.ability << 8 | bytes[kAbilityAt + place];
  return is_possible(end) ? end : CableEnd{false, {}};
}

}  // namespace vchipd
