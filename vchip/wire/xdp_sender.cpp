// SPDX-License-Identifier: MIT
#include "xdp_sender.h"

#include <algorithm>
#include <linux/if_ether.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <utility>

#include "ethernet.h"
#include "fault.h"

namespace vchipd {
namespace {

// A frame of the usual size; the system knows none smaller.
constexpr uint32_t kChunkBytes = 2048;
// XDP_MAX_TX_SKB_BUDGET, which older headers lack; an older system takes 32 frames a call.
constexpr int kBudgetOption = 9;
// The system counts more for a frame than its bytes.
constexpr int kRoomInSystem = 256 * 1024;
// So often a call may take nothing while frames wait, before they are given up.
constexpr uint32_t kPatience = 16;

uint32_t load(const uint32_t *word) {
  return __atomic_load_n(word, __ATOMIC_ACQUIRE);
}
void store(uint32_t *word, uint32_t value) {
  __atomic_store_n(word, value, __ATOMIC_RELEASE);
}

}  // namespace

bool XdpSender::refuse(const char *what) {
  refusal_ = std::string(what) + ": " + strerror(errno);
  return false;
}

bool XdpSender::open(int index, uint32_t mtu) {
  longest_ = std::min<uint32_t>(kChunkBytes, mtu + ETH_HLEN + kTagBytes);
  if (!prepare(index)) {
    socket_.reset();
    return false;
  }
  refusal_.clear();
  return true;
}

bool XdpSender::prepare(int index) {
  socket_ = os::Descriptor(socket(AF_XDP, SOCK_RAW | SOCK_CLOEXEC, 0));
  if (!socket_) return refuse("socket");
  if (!share_memory() || !map_rings() || !bind_to(index)) return false;
  const int budget = kFramesAtATime;
  setsockopt(socket_.get(), SOL_XDP, kBudgetOption, &budget, sizeof budget);
  setsockopt(socket_.get(), SOL_SOCKET, SO_SNDBUF, &kRoomInSystem, sizeof kRoomInSystem);
  return true;
}

bool XdpSender::set(int option, uint32_t value) {
  return setsockopt(socket_.get(), SOL_XDP, option, &value, sizeof value) == 0;
}

bool XdpSender::share_memory() {
  constexpr size_t kBytes = size_t{kChunks} * kChunkBytes;
  void *memory = mmap(nullptr, kBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) return refuse("memory");
  memory_ = Mapping(memory, kBytes);
  xdp_umem_reg area = {};
  area.addr = reinterpret_cast<uintptr_t>(memory);
  area.len = kBytes;
  area.chunk_size = kChunkBytes;
  if (setsockopt(socket_.get(), SOL_XDP, XDP_UMEM_REG, &area, sizeof area) != 0)
    return refuse("memory");
  for (free_count_ = 0; free_count_ < kChunks; ++free_count_)
    free_[free_count_] = free_count_ * kChunkBytes;
  return true;
}

// The ring of what is received into has to be there, and stays empty. As many
// completions have room as there are chunks, so the system never waits for them.
bool XdpSender::map_rings() {
  xdp_mmap_offsets offsets = {};
  socklen_t size = sizeof offsets;
  if (!set(XDP_UMEM_FILL_RING, 1) || !set(XDP_UMEM_COMPLETION_RING, kChunks) ||
      !set(XDP_TX_RING, kChunks) ||
      getsockopt(socket_.get(), SOL_XDP, XDP_MMAP_OFFSETS, &offsets, &size) != 0)
    return refuse("ring");
  return map_ring(outgoing_, offsets.tx, sizeof(xdp_desc), XDP_PGOFF_TX_RING) &&
         map_ring(completed_, offsets.cr, sizeof(uint64_t), XDP_UMEM_PGOFF_COMPLETION_RING);
}

bool XdpSender::map_ring(Ring &ring, const xdp_ring_offset &offset, size_t entry, uint64_t place) {
  const size_t size = static_cast<size_t>(offset.desc) + kChunks * entry;
  void *memory = mmap64(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_POPULATE,
                        socket_.get(), static_cast<off64_t>(place));
  if (memory == MAP_FAILED) return refuse("ring");
  ring.memory = Mapping(memory, size);
  ring.producer =
      reinterpret_cast<uint32_t *>(ring.memory.at(static_cast<size_t>(offset.producer)));
  ring.consumer =
      reinterpret_cast<uint32_t *>(ring.memory.at(static_cast<size_t>(offset.consumer)));
  ring.entries = ring.memory.at(static_cast<size_t>(offset.desc));
  return true;
}

bool XdpSender::bind_to(int index) {
  sockaddr_xdp address = {};
  address.sxdp_family = AF_XDP;
  address.sxdp_ifindex = static_cast<uint32_t>(index);
  address.sxdp_flags = XDP_COPY;
  if (bind(socket_.get(), reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
    return refuse("bind");
  return true;
}

void XdpSender::take_back() {
  const uint32_t end = load(completed_.producer);
  uint32_t place = *completed_.consumer;
  if (place == end) return;
  const auto *chunks = reinterpret_cast<const uint64_t *>(completed_.entries);
  for (; place != end; ++place)
    free_[free_count_++] = static_cast<uint32_t>(chunks[place % kChunks]);
  store(completed_.consumer, end);
}

uint32_t XdpSender::fill(const vchip_frame_t *frames, uint32_t count) {
  auto *entries = reinterpret_cast<xdp_desc *>(outgoing_.entries);
  const uint32_t begin = *outgoing_.producer;
  uint32_t filled = 0;
  for (; filled < count && free_count_ != 0 && frames[filled].length <= longest_; ++filled) {
    const uint32_t chunk = free_[--free_count_];
    const vchip_frame_t &frame = frames[filled];
    if (frame.bytes != memory_.at(chunk)) memcpy(memory_.at(chunk), frame.bytes, frame.length);
    entries[(begin + filled) % kChunks] = {chunk, frames[filled].length, 0};
  }
  store(outgoing_.producer, begin + filled);
  return filled;
}

// A call takes what there is, or stops: after a frame that the interface dropped, or when
// it has taken many. Frames that no call takes are lost, and the socket with them, for
// they must not be sent after later ones.
void XdpSender::kick(WireCounts &counts) {
  const uint32_t end = *outgoing_.producer;
  uint32_t begin = load(outgoing_.consumer);
  for (uint32_t vain = 0; begin != end && vain < kPatience; ++vain) {
    const ssize_t result = sendto(socket_.get(), nullptr, 0, MSG_DONTWAIT, nullptr, 0);
    const uint32_t taken = load(outgoing_.consumer) - begin;
    const uint32_t dropped = taken != 0 && result < 0 && errno == EBUSY ? 1 : 0;
    counts.lost += dropped;
    counts.sent += taken - dropped;
    begin += taken;
    if (taken != 0) vain = 0;
  }
  if (begin == end) return;
  refuse("send");
  counts.lost += end - begin;
  socket_.reset();
}

// In the order in which fill() takes the chunks.
uint32_t XdpSender::lend(vchip_frame_t *places) {
  take_back();
  lent_ = true;
  for (uint32_t place = 0; place < free_count_; ++place) {
    places[place].bytes = memory_.at(free_[free_count_ - 1 - place]);
    places[place].room = longest_;
  }
  return free_count_;
}

uint32_t XdpSender::send(const vchip_frame_t *frames, uint32_t count, WireCounts &counts) {
  if (!std::exchange(lent_, false)) take_back();
  const uint32_t filled = fill(frames, count);
  if (filled != 0) kick(counts);
  return filled;
}

}  // namespace vchipd
