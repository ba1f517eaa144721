// SPDX-License-Identifier: MIT
// Sends frames by AF_XDP: one call of the system takes a whole batch from memory that
// is shared with it, where a packet socket takes them one by one. The kernel copies each
// frame, so this works with every driver, needs no program in the interface, and has
// sent a frame, or dropped it, when the call returns.
#ifndef VCHIPD_XDP_SENDER_H
#define VCHIPD_XDP_SENDER_H

#include <array>
#include <cstddef>
#include <linux/if_xdp.h>
#include <string>

#include "mapping.h"
#include "os/descriptor.h"
#include "wire.h"

namespace vchipd {

class XdpSender {
 public:
  // Frames without link header up to `mtu` can be sent. Whether the system allows it;
  // if not, refusal() says why.
  bool open(int index, uint32_t mtu);
  bool is_open() const { return static_cast<bool>(socket_); }
  const std::string &refusal() const { return refusal_; }

  // As that of Wire: what is in these places is sent without a copy of this process.
  uint32_t lend(vchip_frame_t *places);
  // Sends frames from the first on, and counts them. How many: it stops before one that
  // is too long for it, and when the system still holds all memory that frames are sent
  // from. Those that follow may be sent at once in another way.
  uint32_t send(const vchip_frame_t *frames, uint32_t count, WireCounts &counts);

 private:
  static constexpr uint32_t kChunks = kFramesAtATime;

  // A ring that this process shares with the system.
  struct Ring {
    Mapping memory;
    uint32_t *producer = nullptr;
    uint32_t *consumer = nullptr;
    uint8_t *entries = nullptr;
  };

  bool prepare(int index);
  bool share_memory();
  bool set(int option, uint32_t value);
  bool map_rings();
  bool map_ring(Ring &ring, const xdp_ring_offset &offset, size_t entry, uint64_t place);
  bool bind_to(int index);
  void take_back();
  uint32_t fill(const vchip_frame_t *frames, uint32_t count);
  void kick(WireCounts &counts);
  bool refuse(const char *what);

  os::Descriptor socket_;
  Mapping memory_;
  Ring outgoing_;
  Ring completed_;
  uint32_t longest_ = 0;
  std::array<uint32_t, kChunks> free_ = {};
  uint32_t free_count_ = 0;
  bool lent_ = false;  // the last of the free ones
  std::string refusal_;
};

}  // namespace vchipd

#endif
