// SPDX-License-Identifier: MIT
#include "packet_socket.h"

#include <algorithm>
#include <arpa/inet.h>
#include <linux/if_ether.h>
#include <sys/mman.h>
#include <sys/socket.h>

#include "ethernet.h"
#include "fault.h"

namespace vchipd {
namespace {

// A slot holds a frame of the usual size with two tags, after what the kernel writes
// about it; a larger frame is handed out beside the ring. With the memory of XdpSender a
// port takes a megabyte in all.
constexpr uint32_t kSlotBytes = 26 * 64;
constexpr uint32_t kBlockBytes = 64 * 1024;
constexpr uint32_t kBlocks = 9;
constexpr uint32_t kSlotsOfBlock = kBlockBytes / kSlotBytes;
constexpr uint32_t kSlots = kBlocks * kSlotsOfBlock;
constexpr size_t kRingBytes = size_t{kBlockBytes} * kBlocks;
constexpr int kBesideRing = 112 * 1024;  // the kernel doubles it
// So far, and so much of each frame, is fetched before its turn.
constexpr uint32_t kAhead = 6;
constexpr uint32_t kLinesAhead = 8;
// The longest packet that a sender leaves to its interface, with its link header.
constexpr size_t kPacketRoom = 65536 + 64;
// What is taken from beside the ring at a time.
constexpr size_t kKeptAtATime = 128 * 1024;

void set_option(const std::string &wire, int descriptor, int option, const void *value,
                socklen_t size) {
  if (setsockopt(descriptor, SOL_PACKET, option, value, size) != 0) throw system_fault(wire);
}

void set_number(const std::string &wire, int descriptor, int option, int value) {
  set_option(wire, descriptor, option, &value, sizeof value);
}

os::Descriptor new_packet_socket(const std::string &wire) {
  os::Descriptor made(socket(AF_PACKET, SOCK_RAW | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (made) return made;
  if (errno != EPERM) throw system_fault(wire);
  throw no_right(wire, "open a packet socket");
}

void bind_to(const std::string &wire, const os::Descriptor &descriptor, int index,
             uint16_t protocol) {
  sockaddr_ll address = {};
  address.sll_family = AF_PACKET;
  address.sll_protocol = htons(protocol);
  address.sll_ifindex = index;
  if (bind(descriptor.get(), reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
    throw system_fault(wire);
}

void hear_all(const std::string &wire, const os::Descriptor &descriptor, int index) {
  packet_mreq all = {};
  all.mr_ifindex = index;
  all.mr_type = PACKET_MR_PROMISC;
  set_option(wire, descriptor.get(), PACKET_ADD_MEMBERSHIP, &all, sizeof all);
}

// Puts the tag back that the kernel has taken out; there is room in front.
void put_tag_back(uint8_t *&frame, uint32_t &length, uint32_t type, uint32_t tag,
                  OffloadHeader &offload) {
  memmove(frame - kTagBytes, frame, kMacs);
  frame -= kTagBytes;
  length += kTagBytes;
  frame[kMacs] = static_cast<uint8_t>(type >> 8);
  frame[kMacs + 1] = static_cast<uint8_t>(type);
  frame[kMacs + 2] = static_cast<uint8_t>(tag >> 8);
  frame[kMacs + 3] = static_cast<uint8_t>(tag);
  offload.checksum_start = static_cast<uint16_t>(offload.checksum_start + kTagBytes);
}

uint32_t tag_type(uint32_t status, uint32_t type) {
  return (status & TP_STATUS_VLAN_TPID_VALID) != 0 ? type : ETH_P_8021Q;
}

const tpacket_auxdata *find_auxiliary(msghdr &message) {
  for (cmsghdr *part = CMSG_FIRSTHDR(&message); part != nullptr; part = CMSG_NXTHDR(&message, part))
    if (part->cmsg_level == SOL_PACKET && part->cmsg_type == PACKET_AUXDATA)
      return reinterpret_cast<const tpacket_auxdata *>(CMSG_DATA(part));
  return nullptr;
}

uint32_t load_status(const tpacket2_hdr &head) {
  return __atomic_load_n(&head.tp_status, __ATOMIC_ACQUIRE);
}

}  // namespace

PacketSocket::~PacketSocket() {
  if (ring_ != nullptr) munmap(ring_, kRingBytes);
}

void PacketSocket::open(const std::string &wire, int index) {
  in_ = new_packet_socket(wire);
  open_ring(wire);
  hear_all(wire, in_, index);
  bind_to(wire, in_, index, ETH_P_ALL);
  open_sender(wire, index);
}

// A pair hands over every frame, whatever its address: it need not be promiscuous.
void PacketSocket::open_pair(const std::string &wire, int index, bool takes_away) {
  if (!bpf_.open(index, takes_away)) return open(wire, index);
  open_sender(wire, index);
}

void PacketSocket::open_sender(const std::string &wire, int index) {
  out_ = new_packet_socket(wire);
  set_number(wire, out_.get(), PACKET_QDISC_BYPASS, 1);
  bind_to(wire, out_, index, 0);
  for (size_t place = 0; place < messages_.size(); ++place) {
    messages_[place].msg_hdr.msg_iov = &parts_[place];
    messages_[place].msg_hdr.msg_iovlen = 1;
  }
}

void PacketSocket::open_ring(const std::string &wire) {
  tpacket_req request = {};
  request.tp_block_size = kBlockBytes;
  request.tp_block_nr = kBlocks;
  request.tp_frame_size = kSlotBytes;
  request.tp_frame_nr = kSlots;
  const int room = kBesideRing;
  set_number(wire, in_.get(), PACKET_VERSION, TPACKET_V2);
  set_number(wire, in_.get(), PACKET_VNET_HDR, 1);
  set_number(wire, in_.get(), PACKET_AUXDATA, 1);
  set_number(wire, in_.get(), PACKET_IGNORE_OUTGOING, 1);
  set_number(wire, in_.get(), PACKET_COPY_THRESH, 1);
  setsockopt(in_.get(), SOL_SOCKET, SO_RCVBUF, &room, sizeof room);
  set_option(wire, in_.get(), PACKET_RX_RING, &request, sizeof request);
  void *memory = mmap(nullptr, kRingBytes, PROT_READ | PROT_WRITE, MAP_SHARED, in_.get(), 0);
  if (memory == MAP_FAILED) throw system_fault(wire);
  ring_ = static_cast<uint8_t *>(memory);
}

tpacket2_hdr *PacketSocket::slot(uint32_t number) const {
  const size_t offset = number / kSlotsOfBlock * kBlockBytes + number % kSlotsOfBlock * kSlotBytes;
  return reinterpret_cast<tpacket2_hdr *>(ring_ + offset);
}

bool PacketSocket::has_frames(uint32_t count) const {
  if (bpf_.is_open()) return bpf_.has_frames(count);
  return (load_status(*slot((next_ + count - 1) % kSlots)) & TP_STATUS_USER) != 0;
}

// The memory of a frame whose turn comes soon, which another processor has written.
void PacketSocket::prefetch() const {
  const tpacket2_hdr *head = slot((next_ + kAhead) % kSlots);
  if ((load_status(*head) & TP_STATUS_USER) == 0) return;
  const auto *bytes = reinterpret_cast<const uint8_t *>(head);
  const uint32_t lines = std::min(kLinesAhead, (head->tp_mac + head->tp_snaplen) / 64);
  for (uint32_t line = 1; line <= lines; ++line) __builtin_prefetch(bytes + line * 64);
}

bool PacketSocket::receive_by_bpf(Arrivals &arrivals, uint32_t most, WireCounts &counts) {
  BpfReceiver::Frame frame = {};
  while (arrivals.size() < most && kept_bytes_ < kKeptAtATime) {
    if (!bpf_.next(frame)) return false;
    if ((frame.offload.flags & kNeedsChecksum) == 0 && is_frame_length(frame.length)) {
      arrivals.push_back({frame.bytes, frame.length, 0});
      ++counts.received;
      continue;
    }
    uint8_t *copy = keep(frame.length);
    memcpy(copy, frame.bytes, frame.length);
    take(frame.offload, copy, frame.length, arrivals, counts);
  }
  return true;
}

bool PacketSocket::receive(Arrivals &arrivals, uint32_t most, WireCounts &counts) {
  if (bpf_.is_open()) return receive_by_bpf(arrivals, most, counts);
  int fault = 0;
  socklen_t size = sizeof fault;
  for (; taken_ < most && arrivals.size() < most && kept_bytes_ < kKeptAtATime; ++taken_) {
    tpacket2_hdr &head = *slot(next_);
    const uint32_t status = load_status(head);
    if ((status & TP_STATUS_USER) == 0) {
      // An interface that goes down leaves a fault, which is over with being read.
      if (taken_ == 0) getsockopt(in_.get(), SOL_SOCKET, SO_ERROR, &fault, &size);
      return false;
    }
    prefetch();
    if ((status & TP_STATUS_COPY) != 0) {
      take_copy(arrivals, counts);
    } else {
      take_slot(head, arrivals, counts);
    }
    next_ = (next_ + 1) % kSlots;
  }
  return true;
}

void PacketSocket::arrived() {
  if (bpf_.is_open()) bpf_.arrived();
  for (; taken_ > 0; --taken_) {
    tpacket2_hdr &head = *slot((next_ + kSlots - taken_) % kSlots);
    __atomic_store_n(&head.tp_status, uint32_t{TP_STATUS_KERNEL}, __ATOMIC_RELEASE);
  }
  kept_.clear();
  kept_bytes_ = 0;
}

void PacketSocket::take_slot(tpacket2_hdr &head, Arrivals &arrivals, WireCounts &counts) {
  uint8_t *frame = reinterpret_cast<uint8_t *>(&head) + head.tp_mac;
  uint32_t length = head.tp_snaplen;
  OffloadHeader offload = {};
  memcpy(&offload, frame - sizeof offload, sizeof offload);
  if (length < head.tp_len || length < kMacs) {
    ++counts.lost;
    return;
  }
  if ((head.tp_status & TP_STATUS_VLAN_VALID) != 0)
    put_tag_back(frame, length, tag_type(head.tp_status, head.tp_vlan_tpid), head.tp_vlan_tci,
                 offload);
  take(offload, frame, length, arrivals, counts);
}

uint8_t *PacketSocket::keep(uint32_t length) {
  kept_bytes_ += length;
  return kept_.emplace_back(length).data();
}

void PacketSocket::take_copy(Arrivals &arrivals, WireCounts &counts) {
  uint8_t *memory = keep(kTagBytes + kPacketRoom);
  OffloadHeader offload = {};
  iovec parts[] = {{&offload, sizeof offload}, {memory + kTagBytes, kPacketRoom}};
  alignas(cmsghdr) char control[CMSG_SPACE(sizeof(tpacket_auxdata))] = {};
  msghdr message = {};
  message.msg_iov = parts;
  message.msg_iovlen = 2;
  message.msg_control = control;
  message.msg_controllen = sizeof control;
  const ssize_t size = recvmsg(in_.get(), &message, MSG_DONTWAIT);
  if (size < static_cast<ssize_t>(sizeof offload + kMacs)) {
    ++counts.lost;
    return;
  }
  uint8_t *frame = memory + kTagBytes;
  auto length = static_cast<uint32_t>(static_cast<size_t>(size) - sizeof offload);
  const tpacket_auxdata *about = find_auxiliary(message);
  if (about != nullptr && (about->tp_status & TP_STATUS_VLAN_VALID) != 0)
    put_tag_back(frame, length, tag_type(about->tp_status, about->tp_vlan_tpid), about->tp_vlan_tci,
                 offload);
  take(offload, frame, length, arrivals, counts);
}

void PacketSocket::take(const OffloadHeader &offload, uint8_t *frame, uint32_t length,
                        Arrivals &arrivals, WireCounts &counts) {
  if (offload.division != kDividedNot)
    return take_divided(offload, frame, length, arrivals, counts);
  const bool asks = (offload.flags & kNeedsChecksum) != 0;
  if (!is_frame_length(length) || (asks && !complete_checksum(offload, frame, length))) {
    ++counts.unusable;
    return;
  }
  arrivals.push_back({frame, length, 0});
  ++counts.received;
}

void PacketSocket::take_divided(const OffloadHeader &offload, const uint8_t *packet,
                                uint32_t length, Arrivals &arrivals, WireCounts &counts) {
  const bool divided = divide(offload, packet, length, [&](uint32_t size) {
    uint8_t *frame = keep(size);
    arrivals.push_back({frame, size, 0});
    ++counts.received;
    return frame;
  });
  if (!divided) ++counts.unusable;
}

void PacketSocket::send_by_xdp(int index, uint32_t mtu) {
  if (!xdp_.is_open()) xdp_.open(index, mtu);
}

void PacketSocket::send(const vchip_frame_t *frames, uint32_t count, WireCounts &counts) {
  const uint32_t sent = xdp_.is_open() ? xdp_.send(frames, count, counts) : 0;
  if (sent < count) send_by_packets(frames + sent, count - sent, counts);
}

void PacketSocket::send_by_packets(const vchip_frame_t *frames, uint32_t count,
                                   WireCounts &counts) {
  for (uint32_t place = 0; place < count; ++place)
    parts_[place] = {frames[place].bytes, frames[place].length};
  for (uint32_t place = 0; place < count;) {
    const int sent = sendmmsg(out_.get(), messages_.data() + place, count - place, MSG_DONTWAIT);
    if (sent < 0) ++counts.lost;
    if (sent > 0) counts.sent += static_cast<uint64_t>(sent);
    place += sent > 0 ? static_cast<uint32_t>(sent) : 1;
  }
}

uint64_t PacketSocket::take_overflow() {
  if (bpf_.is_open()) return bpf_.take_overflow();
  tpacket_stats statistics = {};
  socklen_t size = sizeof statistics;
  if (getsockopt(in_.get(), SOL_PACKET, PACKET_STATISTICS, &statistics, &size) != 0) return 0;
  return statistics.tp_drops;
}

}  // namespace vchipd
