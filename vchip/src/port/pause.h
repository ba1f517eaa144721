// SPDX-License-Identifier: MIT
// Which flow control two ends of a full-duplex link agree on.
#ifndef VCHIP_PORT_PAUSE_H
#define VCHIP_PORT_PAUSE_H

#include <cstdint>

namespace vchip {

struct Pause {
  bool transmit;  // sends pause frames
  bool receive;   // obeys them
};
inline constexpr Pause kNoPause = {false, false};

// What `local` does, by the table of IEEE 802.3 annex 28B.3. Ability words.
Pause resolve_pause(uint32_t local, uint32_t partner);

}  // namespace vchip

#endif
