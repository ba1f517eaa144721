// SPDX-License-Identifier: MIT
#include "bpf_receiver.h"

#include <linux/bpf.h>
#include <sys/mman.h>
#include <sys/syscall.h>

#include "ethernet.h"
#include "fault.h"

namespace vchipd {
namespace {

// A power of two of pages: with the memory of XdpSender less than a megabyte.
constexpr size_t kFrameRingBytes = 512 * 1024;
// BPF_TCX_INGRESS, which older headers lack.
constexpr auto kIngress = static_cast<bpf_attach_type>(46);
// BPF_F_BEFORE: no other program is in front, which could keep frames from this one.
constexpr uint32_t kFirst = 1 << 3;
constexpr int32_t kGoesOn = -1, kGoesNoFurther = 2;
constexpr uint64_t kRecordHeader = BPF_RINGBUF_HDR_SZ;

int bpf(bpf_cmd command, bpf_attr &attributes) {
  return static_cast<int>(syscall(SYS_bpf, command, &attributes, sizeof attributes));
}

os::Descriptor new_map(bpf_map_type type, uint32_t value, uint32_t entries, uint32_t flags) {
  bpf_attr attributes = {};
  attributes.map_type = type;
  attributes.key_size = value != 0 ? sizeof(uint32_t) : 0;
  attributes.value_size = value;
  attributes.max_entries = entries;
  attributes.map_flags = flags;
  return os::Descriptor(bpf(BPF_MAP_CREATE, attributes));
}

Mapping map_shared(const os::Descriptor &map, size_t bytes, int protection, size_t offset) {
  void *memory =
      mmap64(nullptr, bytes, protection, MAP_SHARED, map.get(), static_cast<off64_t>(offset));
  return memory == MAP_FAILED ? Mapping() : Mapping(memory, bytes);
}

// As packet sockets tell it. What is divided tells by its checksum which kind it is.
OffloadHeader offload_of(const RingRecord &record) {
  OffloadHeader header = {};
  if ((record.flags & kAsksChecksum) == 0) return header;
  header.flags = kNeedsChecksum;
  header.checksum_start = record.checksum_start;
  header.checksum_offset = record.checksum_offset;
  if ((record.flags & kHasTag) != 0)
    header.checksum_start = static_cast<uint16_t>(header.checksum_start + kTagBytes);
  if (record.division_size == 0) return header;
  header.division_size = record.division_size;
  header.division = record.checksum_offset == kUdpChecksum ? kDividedUdp : kDividedTcp4;
  return header;
}

}  // namespace

bool BpfReceiver::refuse(const char *what) {
  if (errno != EPERM && errno != EACCES) refusal_ = std::string(what) + ": " + strerror(errno);
  return false;
}

bool BpfReceiver::open(int index, bool takes_away) {
  refusal_.clear();
  if (make_maps() && map_memory() && load(takes_away) && attach(index)) return true;
  std::string why = std::move(refusal_);
  *this = BpfReceiver();
  refusal_ = std::move(why);
  return false;
}

bool BpfReceiver::make_maps() {
  ring_ = new_map(BPF_MAP_TYPE_RINGBUF, 0, kFrameRingBytes, 0);
  if (!ring_) return refuse("ring");
  notes_map_ = new_map(BPF_MAP_TYPE_ARRAY, sizeof(RingNotes), 1, BPF_F_MMAPABLE);
  return notes_map_ ? true : refuse("map");
}

// The kernel shows the frames twice, one after the other: none is in two parts.
bool BpfReceiver::map_memory() {
  const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  consumer_memory_ = map_shared(ring_, page, PROT_READ | PROT_WRITE, 0);
  frame_memory_ = map_shared(ring_, page + 2 * kFrameRingBytes, PROT_READ, page);
  notes_memory_ = map_shared(notes_map_, page, PROT_READ | PROT_WRITE, 0);
  if (!consumer_memory_ || !frame_memory_ || !notes_memory_) return refuse("memory");
  consumed_ = reinterpret_cast<uint64_t *>(consumer_memory_.at(0));
  produced_ = reinterpret_cast<const uint64_t *>(frame_memory_.at(0));
  frames_ = frame_memory_.at(page);
  notes_ = reinterpret_cast<RingNotes *>(notes_memory_.at(0));
  return true;
}

bool BpfReceiver::load(bool takes_away) {
  const std::optional<PacketLayout> &layout = packet_layout();
  if (!layout) {
    refusal_ = "the kernel does not describe its packets";
    return false;
  }
  const std::vector<uint64_t> code = receive_program(*layout, ring_.get(), notes_map_.get(),
                                                     takes_away ? kGoesNoFurther : kGoesOn);
  bpf_attr attributes = {};
  attributes.prog_type = BPF_PROG_TYPE_SCHED_CLS;
  attributes.expected_attach_type = kIngress;
  attributes.insns = reinterpret_cast<uintptr_t>(code.data());
  attributes.insn_cnt = static_cast<uint32_t>(code.size());
  attributes.license = reinterpret_cast<uintptr_t>("Dual MIT/GPL");
  memcpy(attributes.prog_name, "vchipd_receive", sizeof "vchipd_receive");
  program_ = os::Descriptor(bpf(BPF_PROG_LOAD, attributes));
  return program_ ? true : refuse("program");
}

// Detached with the descriptor, or with the interface.
bool BpfReceiver::attach(int index) {
  bpf_attr attributes = {};
  attributes.link_create.prog_fd = static_cast<uint32_t>(program_.get());
  attributes.link_create.target_ifindex = static_cast<uint32_t>(index);
  attributes.link_create.attach_type = kIngress;
  attributes.link_create.flags = kFirst;
  link_ = os::Descriptor(bpf(BPF_LINK_CREATE, attributes));
  return link_ ? true : refuse("interface");
}

const uint8_t *BpfReceiver::at(uint64_t position) const {
  return frames_ + position % kFrameRingBytes;
}

bool BpfReceiver::has_frames(uint32_t count) const {
  const uint64_t produced = __atomic_load_n(produced_, __ATOMIC_ACQUIRE);
  if (produced - next_ <= (count - 1) * last_record_) return false;
  const auto *header = reinterpret_cast<const uint32_t *>(at(next_));
  return (__atomic_load_n(header, __ATOMIC_ACQUIRE) & BPF_RINGBUF_BUSY_BIT) == 0;
}

bool BpfReceiver::next(Frame &frame) {
  for (;;) {
    if (next_ == __atomic_load_n(produced_, __ATOMIC_ACQUIRE)) return false;
    const uint8_t *place = at(next_);
    const uint32_t length =
        __atomic_load_n(reinterpret_cast<const uint32_t *>(place), __ATOMIC_ACQUIRE);
    if ((length & BPF_RINGBUF_BUSY_BIT) != 0) return false;
    const uint64_t size = length & ~uint32_t{BPF_RINGBUF_DISCARD_BIT};
    next_ += (size + kRecordHeader + 7) / 8 * 8;
    if ((length & BPF_RINGBUF_DISCARD_BIT) != 0) continue;
    last_record_ = size;
    const uint8_t *bytes = place + kRecordHeader;
    const auto &record = *reinterpret_cast<const RingRecord *>(bytes);
    const bool tagged = (record.flags & kHasTag) != 0;
    frame.bytes = bytes + (tagged ? kTaggedFrame : kPlainFrame);
    frame.length = record.length + (tagged ? kTagBytes : 0);
    frame.offload = offload_of(record);
    return true;
  }
}

void BpfReceiver::arrived() {
  __atomic_store_n(consumed_, next_, __ATOMIC_RELEASE);
}

void BpfReceiver::arm() {
  __atomic_store_n(&notes_->waits, 1u, __ATOMIC_SEQ_CST);
}

uint64_t BpfReceiver::take_overflow() {
  const uint64_t missed = __atomic_load_n(&notes_->missed, __ATOMIC_RELAXED);
  return missed - std::exchange(told_missed_, missed);
}

}  // namespace vchipd
