// SPDX-License-Identifier: MIT
// Which link two ends of a cable agree on, and which flow control on it.
#ifndef VCHIP_PORT_LINK_H
#define VCHIP_PORT_LINK_H

#include <cstdint>

namespace vchip {

struct Link {
  bool up;
  uint32_t speed;  // SDK code; 0 while the link is down
  uint32_t duplex;
};
inline constexpr Link kLinkDown = {false, 0, 0};

// One end: it negotiates over what it advertises, or is forced to one mode.
// Codes of speeds that the board does not have never link.
struct LinkEnd {
  bool negotiates;
  uint32_t advertised;  // ability word
  uint32_t speed;
  uint32_t duplex;
};

// The link that `local` sees, by IEEE 802.3 clause 28.
Link resolve_link(const LinkEnd &local, const LinkEnd &partner);

// The best mode of an ability word by the order of IEEE 802.3 annex 28B;
// kLinkDown for a word without one.
Link best_mode(uint32_t abilities);

// Flow control of a full-duplex link.
struct Pause {
  bool transmit;  // sends pause frames
  bool receive;   // obeys them
};
inline constexpr Pause kNoPause = {false, false};

// What `local` does, by the table of IEEE 802.3 annex 28B.3. Ability words.
Pause resolve_pause(uint32_t local, uint32_t partner);

}  // namespace vchip

#endif
