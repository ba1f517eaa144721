// SPDX-License-Identifier: MIT
// Frames on their way through a unit: the steps, what they ask for, and the
// queues. The maker of a run holds the chip's lock.
#ifndef VCHIP_PIPELINE_RUN_H
#define VCHIP_PIPELINE_RUN_H

#include <cstdint>

#include "pipeline/traffic.h"
#include "pipeline/way.h"
#include "unit/state.h"

namespace vchip {

class Run {
 public:
  // Compiles the settings if they have changed, and sends what has had its time.
  Run(State &state, uint32_t unit, UnitTraffic &traffic, Listener *listener = nullptr);

  // A frame arrives at a port; whatever may leave leaves. One that is lent and leaves
  // unchanged is not copied.
  void arrive(int32_t port, const uint8_t *bytes, uint32_t length, bool lent = false);
  // A frame will arrive soon: what its way will look at is brought nearer.
  void expect(int32_t port, const uint8_t *bytes, uint32_t length) const;
  // The processor sends a frame out of one port as it is.
  void transmit(int32_t port, const uint8_t *bytes, uint32_t length);
  // Sends what the settings let go now, and loses what has lost its link.
  void settle();
  // Lets the unit's time go on, and everything happen in its order.
  void advance(uint64_t clock);
  // When the next waiting frame leaves; kNever if none does.
  uint64_t next_departure() const;

 private:
  // A frame on its way out of a port.
  struct Departure {
    FrameNote note;
    const uint8_t *bytes;
    int32_t port;
    uint32_t queue;
  };

  void pass(int32_t port, const uint8_t *bytes, uint32_t length, bool turned);
  void send_all(const Way &way);
  void mirror(const Way &way, uint32_t groups);
  void enqueue(const Departure &departure);
  void depart(const Departure &departure);
  void mirror_sent(const Departure &departure);
  void serve(int32_t port);
  uint64_t departure_of(int32_t port, uint32_t wire) const;
  uint64_t port_departure(int32_t port) const;
  void lose_held();
  void go_to(uint64_t clock);
  void turn_around();
  void tell(const char *step, const char *decision, int32_t port, const char *what,
            const char *setting) const;
  void tell_lost(const char *step, const Departure &departure, const char *what,
                 const char *setting) const;

  State &state_;
  Unit &unit_;
  UnitTraffic &traffic_;
  Listener *listener_;
  uint64_t now_;
  const uint8_t *lent_ = nullptr;  // bytes of a frame that need not be copied
};

// The heads of a port's queues.
Scheduler::Heads heads_of(const PortTraffic &port);

}  // namespace vchip

#endif
