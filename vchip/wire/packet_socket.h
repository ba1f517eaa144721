// SPDX-License-Identifier: MIT
// The frames of an interface: those that come in, from a ring that the kernel
// fills, and those that go out.
#ifndef VCHIPD_PACKET_SOCKET_H
#define VCHIPD_PACKET_SOCKET_H

#include <array>
#include <deque>
#include <linux/if_packet.h>
#include <string>
#include <sys/socket.h>
#include <vector>

#include "bpf_receiver.h"
#include "offload.h"
#include "os/descriptor.h"
#include "wire.h"
#include "xdp_sender.h"

namespace vchipd {

class PacketSocket {
 public:
  PacketSocket() = default;
  ~PacketSocket();
  PacketSocket(const PacketSocket &) = delete;
  PacketSocket &operator=(const PacketSocket &) = delete;

  // The text of a Fault begins with `wire`.
  void open(const std::string &wire, int index);
  // The same for an end of a pair, where the system allows it by a program in the kernel. If
  // it `takes_away` the frames, nobody else gets them.
  void open_pair(const std::string &wire, int index, bool takes_away);
  // Sends by AF_XDP from now on where the system allows it, frames up to that MTU.
  void send_by_xdp(int index, uint32_t mtu);
  // Why it does not, if it was to.
  const std::string &xdp_refusal() const { return xdp_.refusal(); }
  const std::string &bpf_refusal() const { return bpf_.refusal(); }
  // Readable when there are frames, if arm() was called before they came.
  int descriptor() const { return bpf_.is_open() ? bpf_.descriptor() : in_.get(); }
  void arm() {
    if (bpf_.is_open()) bpf_.arm();
  }

  // As those of Wire.
  int processor() const { return bpf_.is_open() ? bpf_.processor() : -1; }
  bool receive(Arrivals &arrivals, uint32_t most, WireCounts &counts);
  void arrived();
  bool has_frames(uint32_t count) const;
  uint32_t lend(vchip_frame_t *places) { return xdp_.is_open() ? xdp_.lend(places) : 0; }
  void send(const vchip_frame_t *frames, uint32_t count, WireCounts &counts);
  // Frames that came while the ring was full, since this was asked last.
  uint64_t take_overflow();

 private:
  void open_ring(const std::string &wire);
  void open_sender(const std::string &wire, int index);
  bool receive_by_bpf(Arrivals &arrivals, uint32_t most, WireCounts &counts);
  tpacket2_hdr *slot(uint32_t number) const;
  void prefetch() const;
  void take_slot(tpacket2_hdr &head, Arrivals &arrivals, WireCounts &counts);
  void take_copy(Arrivals &arrivals, WireCounts &counts);
  void take(const OffloadHeader &offload, uint8_t *frame, uint32_t length, Arrivals &arrivals,
            WireCounts &counts);
  void take_divided(const OffloadHeader &offload, const uint8_t *packet, uint32_t length,
                    Arrivals &arrivals, WireCounts &counts);
  uint8_t *keep(uint32_t length);
  void send_by_packets(const vchip_frame_t *frames, uint32_t count, WireCounts &counts);

  BpfReceiver bpf_;
  os::Descriptor in_;
  os::Descriptor out_;
  XdpSender xdp_;
  std::array<mmsghdr, kFramesAtATime> messages_ = {};
  std::array<iovec, kFramesAtATime> parts_ = {};
  uint8_t *ring_ = nullptr;
  uint32_t next_ = 0;   // slot to look at
  uint32_t taken_ = 0;  // slots before it that have not arrived
  std::deque<std::vector<uint8_t>> kept_;
  size_t kept_bytes_ = 0;
};

}  // namespace vchipd

#endif
