// SPDX-License-Identifier: MIT
// Who sees the frames that pass between the wires and the chip.
#ifndef VCHIPD_OBSERVER_H
#define VCHIPD_OBSERVER_H

#include <cstdint>

#include "wire.h"

namespace vchipd {

class Observer {
 public:
  virtual ~Observer() = default;
  // Frames go into the chip now.
  virtual void arriving(const Arrivals &arrivals) = 0;
  // They have, those of this port; others of the list left by a front port.
  virtual void arrived(int32_t port, const Arrivals &arrivals) = 0;
  // Frames have left the chip by a port.
  virtual void left(int32_t port, const vchip_frame_t *frames, uint32_t count) = 0;
};

}  // namespace vchipd

#endif
