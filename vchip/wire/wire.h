// SPDX-License-Identifier: MIT
// What is at the other end of a port.
#ifndef VCHIPD_WIRE_H
#define VCHIPD_WIRE_H

#include <swctl-vchip/frame.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vchipd {

class Loop;

// Frames that a wire has taken in. What they point to stays as it is until the
// wire is told that they have arrived.
using Arrivals = std::vector<vchip_arrival_t>;

// What a wire tells the port that it is plugged into.
class Socket {
 public:
  virtual ~Socket() = default;
  // There are frames to take in.
  virtual void frames_came() = 0;
  // The other end is there, or is no longer.
  virtual void carrier_is(bool on) = 0;
  // It advertises something else.
  virtual void partner_is_new() = 0;
};

struct WireCounts {
  uint64_t received = 0;  // frames that came in
  uint64_t sent = 0;
  uint64_t lost = 0;      // the other end did not take them
  uint64_t unusable = 0;  // too short or too long for a port
  uint64_t missed = 0;    // they came faster than they were taken in
};

// The frames a wire takes in or gives away at a time.
inline constexpr uint32_t kFramesAtATime = 64;
// The bytes of memory in front of each frame that a wire sends.
inline constexpr uint32_t kHeadroom = 16;

// The note of one whose interface somebody has removed.
inline constexpr const char *kGoneNote = "the interface is gone";

class Wire {
 public:
  virtual ~Wire() = default;

  // Begins to listen. Throws Fault.
  virtual void start(Loop &loop, Socket &socket) = 0;
  // Takes in frames, at most `most`; whether there are more.
  virtual bool receive(Arrivals &arrivals, uint32_t most) = 0;
  // Whether so many frames have come, as far as it can tell without asking the system.
  virtual bool shows_frames(uint32_t) const { return false; }
  // The processor on which its last frame was sent to it; -1: it does not know.
  virtual int processor() const { return -1; }
  // Whether such a wire also tells the loop that frames have come, as it does at first.
  // To tell of every frame costs the sender's time. Asked for before each wait, and frames
  // that have come before are not told of: the wire has to be looked at afterwards.
  virtual void announce(bool) {}
  // Those have arrived, and what of them leaves at once has been sent.
  virtual void arrived() {}
  // Gives them to the port, lent until then.
  virtual int32_t deliver(uint32_t unit, int32_t port, Arrivals &arrivals);
  // Places in its own memory for frames that it is to send next, kFramesAtATime at most; 0:
  // any will do. They hold until the next call of it or of send().
  virtual uint32_t lend(vchip_frame_t *) { return 0; }
  // Sends frames, or counts them as lost. In front of each are kHeadroom bytes
  // that the wire may write to.
  virtual void send(const vchip_frame_t *frames, uint32_t count) = 0;
  // Whether frames are still to be sent.
  virtual bool has_backlog() const { return false; }
  // Which ports of the unit have a link, a bit for each; told now and then.
  virtual void links_are(uint32_t) {}
  // When its next frame comes, on the chip's clock, if it knows.
  virtual std::optional<uint64_t> next_time() const { return std::nullopt; }
  // It will bring no more frames.
  virtual bool is_over() const { return false; }
  // A word about its present state; empty if there is nothing to say.
  virtual std::string note() const { return ""; }
  // The link that its partner negotiates.
  virtual vchip_partner_t partner() const;

  virtual const WireCounts &counts() { return counts_; }

 protected:
  WireCounts counts_;
};

inline bool is_frame_length(uint64_t length) {
  return length >= VCHIP_FRAME_MIN && length <= VCHIP_FRAME_MAX;
}

}  // namespace vchipd

#endif
