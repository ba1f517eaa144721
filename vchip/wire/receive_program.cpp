// SPDX-License-Identifier: MIT
#include "receive_program.h"

#include <array>
#include <bit>
#include <cstddef>
#include <linux/bpf.h>
#include <map>
#include <string>

#include "ethernet.h"

namespace vchipd {
namespace {

// The ring gives out places of fixed sizes: that of the smallest frame, steps that waste
// little, a full one with two tags, and those of larger MTUs and undivided packets.
constexpr std::array kPlaceSizes = {60,   124,  252,  380,  508,   764,   1020,
                                    1268, 1522, 4096, 9216, 16384, 32768, 65550};

constexpr uint8_t kFrame = BPF_REG_6;   // the packet
constexpr uint8_t kRecord = BPF_REG_7;  // where it is written
constexpr uint8_t kLength = BPF_REG_9;

constexpr int16_t offset_of(size_t offset) {
  return static_cast<int16_t>(offset);
}

// Instructions with names for the targets of jumps.
class Assembler {
 public:
  void label(const std::string &name) { labels_[name] = code_.size(); }
  void move(uint8_t to, uint8_t from) { add(BPF_ALU64 | BPF_MOV | BPF_X, to, from); }
  void set(uint8_t to, int32_t value) { add(BPF_ALU64 | BPF_MOV | BPF_K, to, 0, 0, value); }
  void plus(uint8_t to, int32_t value) { add(BPF_ALU64 | BPF_ADD | BPF_K, to, 0, 0, value); }
  void minus(uint8_t to, uint8_t from) { add(BPF_ALU64 | BPF_SUB | BPF_X, to, from); }
  void mask(uint8_t to, uint32_t bits) {
    add(BPF_ALU64 | BPF_AND | BPF_K, to, 0, 0, static_cast<int32_t>(bits));
  }
  void load(uint8_t size, uint8_t to, uint8_t from, int16_t offset) {
    add(static_cast<uint8_t>(BPF_LDX | BPF_MEM | size), to, from, offset);
  }
  void store(uint8_t size, uint8_t to, int16_t offset, uint8_t from) {
    add(static_cast<uint8_t>(BPF_STX | BPF_MEM | size), to, from, offset);
  }
  void store_value(uint8_t size, uint8_t to, int16_t offset, int32_t value) {
    add(static_cast<uint8_t>(BPF_ST | BPF_MEM | size), to, 0, offset, value);
  }
  void swap16(uint8_t to) { add(BPF_ALU | BPF_END | BPF_TO_BE, to, 0, 0, 16); }
  void add_atomically(uint8_t to, int16_t offset, uint8_t from) {
    add(BPF_STX | BPF_ATOMIC | BPF_DW, to, from, offset, BPF_ADD);
  }
  void go(const std::string &target) { jump(BPF_JMP | BPF_JA, 0, 0, target); }
  void if_equal(uint8_t left, int32_t right, const std::string &target) {
    jump(BPF_JMP | BPF_JEQ | BPF_K, left, right, target);
  }
  void if_other(uint8_t left, int32_t right, const std::string &target) {
    jump(BPF_JMP | BPF_JNE | BPF_K, left, right, target);
  }
  void if_greater(uint8_t left, int32_t right, const std::string &target) {
    jump(BPF_JMP | BPF_JGT | BPF_K, left, right, target);
  }
  void if_less(uint8_t left, int32_t right, const std::string &target) {
    jump(BPF_JMP | BPF_JLT | BPF_K, left, right, target);
  }
  void call(int32_t function) { add(BPF_JMP | BPF_CALL, 0, 0, 0, function); }
  void exit() { add(BPF_JMP | BPF_EXIT, 0, 0); }
  void map(uint8_t to, int descriptor) { wide(to, BPF_PSEUDO_MAP_FD, descriptor); }
  // The memory of the only entry of a map.
  void memory_of_map(uint8_t to, int descriptor) { wide(to, BPF_PSEUDO_MAP_VALUE, descriptor); }

  std::vector<uint64_t> finish() {
    for (const auto &[place, target] : jumps_)
      code_[place].off = static_cast<int16_t>(labels_.at(target) - place - 1);
    std::vector<uint64_t> words;
    for (const bpf_insn &each : code_) words.push_back(std::bit_cast<uint64_t>(each));
    return words;
  }

 private:
  void add(uint8_t code, uint8_t to, uint8_t from, int16_t offset = 0, int32_t value = 0) {
    bpf_insn made = {};
    made.code = code;
    made.dst_reg = to & 0xf;
    made.src_reg = from & 0xf;
    made.off = offset;
    made.imm = value;
    code_.push_back(made);
  }
  void jump(uint8_t code, uint8_t left, int32_t right, const std::string &target) {
    jumps_[code_.size()] = target;
    add(code, left, 0, 0, right);
  }
  void wide(uint8_t to, uint8_t kind, int32_t value) {
    add(BPF_LD | BPF_DW | BPF_IMM, to, kind, 0, value);
    add(0, 0, 0);
  }

  std::vector<bpf_insn> code_;
  std::map<std::string, size_t> labels_;
  std::map<size_t, std::string> jumps_;
};

// Reads from the structure of the kernel that the packet is, to a place at `base`.
void read_packet(Assembler &code, uint32_t from, int32_t size, uint8_t base, int32_t offset) {
  code.move(BPF_REG_1, base);
  code.plus(BPF_REG_1, offset);
  code.set(BPF_REG_2, size);
  code.move(BPF_REG_3, kFrame);
  code.plus(BPF_REG_3, static_cast<int32_t>(from));
  code.call(BPF_FUNC_probe_read_kernel);
}

void reserve(Assembler &code, int ring) {
  for (const int32_t size : kPlaceSizes) {
    const std::string larger = "larger than " + std::to_string(size);
    code.if_greater(kLength, size, larger);
    code.set(BPF_REG_2, size + static_cast<int32_t>(kPlainFrame));
    code.go("reserve");
    code.label(larger);
  }
  code.go("missed");
  code.label("reserve");
  code.map(BPF_REG_1, ring);
  code.set(BPF_REG_3, 0);
  code.call(BPF_FUNC_ringbuf_reserve);
  code.if_equal(BPF_REG_0, 0, "missed");
  code.move(kRecord, BPF_REG_0);
}

// The place of the checksum is counted from the begin of the memory, not of the frame.
void describe(Assembler &code, const PacketLayout &layout) {
  constexpr int16_t kStart = offset_of(offsetof(RingRecord, checksum_start));
  code.store(BPF_W, kRecord, offset_of(offsetof(RingRecord, length)), kLength);
  code.store_value(BPF_W, kRecord, offset_of(offsetof(RingRecord, division_size)), 0);
  code.store_value(BPF_DW, BPF_REG_10, -8, 0);
  read_packet(code, layout.checksum_state, 1, BPF_REG_10, -8);
  code.load(BPF_DW, BPF_REG_1, BPF_REG_10, -8);
  code.mask(BPF_REG_1, layout.checksum_mask);
  code.if_other(BPF_REG_1, static_cast<int32_t>(layout.checksum_asked), "copy");
  read_packet(code, layout.checksum_start, 2, kRecord, kStart);
  read_packet(code, layout.checksum_offset, 2, kRecord, offsetof(RingRecord, checksum_offset));
  read_packet(code, layout.head, 8, BPF_REG_10, -8);
  read_packet(code, layout.data, 8, BPF_REG_10, -16);
  code.load(BPF_DW, BPF_REG_1, BPF_REG_10, -16);
  code.load(BPF_DW, BPF_REG_2, BPF_REG_10, -8);
  code.minus(BPF_REG_1, BPF_REG_2);
  code.load(BPF_H, BPF_REG_2, kRecord, kStart);
  code.minus(BPF_REG_2, BPF_REG_1);
  code.store(BPF_H, kRecord, kStart, BPF_REG_2);
  code.store_value(BPF_H, kRecord, offset_of(offsetof(RingRecord, flags)), kAsksChecksum);
  code.load(BPF_W, BPF_REG_1, kFrame, offset_of(offsetof(__sk_buff, gso_size)));
  code.store(BPF_H, kRecord, offset_of(offsetof(RingRecord, division_size)), BPF_REG_1);
}

// With a tag that the kernel keeps beside the frame the addresses move in front of it.
void copy(Assembler &code) {
  code.label("copy");
  code.move(BPF_REG_1, kFrame);
  code.set(BPF_REG_2, 0);
  code.move(BPF_REG_3, kRecord);
  code.plus(BPF_REG_3, kPlainFrame);
  code.move(BPF_REG_4, kLength);
  code.call(BPF_FUNC_skb_load_bytes);
  code.if_other(BPF_REG_0, 0, "discard");
  code.load(BPF_W, BPF_REG_1, kFrame, offset_of(offsetof(__sk_buff, vlan_present)));
  code.if_equal(BPF_REG_1, 0, "submit");
  for (uint32_t byte = 0; byte < kMacs; byte += 4) {
    code.load(BPF_W, BPF_REG_1, kRecord, offset_of(kPlainFrame + byte));
    code.store(BPF_W, kRecord, offset_of(kTaggedFrame + byte), BPF_REG_1);
  }
  code.load(BPF_W, BPF_REG_1, kFrame, offset_of(offsetof(__sk_buff, vlan_proto)));
  code.store(BPF_H, kRecord, offset_of(kTaggedFrame + kMacs), BPF_REG_1);
  code.load(BPF_W, BPF_REG_1, kFrame, offset_of(offsetof(__sk_buff, vlan_tci)));
  code.swap16(BPF_REG_1);
  code.store(BPF_H, kRecord, offset_of(kTaggedFrame + kMacs + 2), BPF_REG_1);
  code.load(BPF_H, BPF_REG_1, kRecord, offset_of(offsetof(RingRecord, flags)));
  code.plus(BPF_REG_1, kHasTag);
  code.store(BPF_H, kRecord, offset_of(offsetof(RingRecord, flags)), BPF_REG_1);
}

// Whether this process waits is asked after the frame is there to be seen, and the
// process looks for frames after it has said that it waits: so one of both sees the other.
// A record that is thrown away wakes without one more frame.
void submit(Assembler &code, int ring, int notes) {
  constexpr int16_t kWaits = offset_of(offsetof(RingNotes, waits));
  code.label("submit");
  code.move(BPF_REG_1, kRecord);
  code.set(BPF_REG_2, BPF_RB_NO_WAKEUP);
  code.call(BPF_FUNC_ringbuf_submit);
  code.memory_of_map(BPF_REG_1, notes);
  code.load(BPF_W, BPF_REG_2, BPF_REG_1, kWaits);
  code.if_equal(BPF_REG_2, 0, "end");
  code.store_value(BPF_W, BPF_REG_1, kWaits, 0);
  code.map(BPF_REG_1, ring);
  code.set(BPF_REG_2, 8);
  code.set(BPF_REG_3, 0);
  code.call(BPF_FUNC_ringbuf_reserve);
  code.if_equal(BPF_REG_0, 0, "end");
  code.move(BPF_REG_1, BPF_REG_0);
  code.set(BPF_REG_2, BPF_RB_FORCE_WAKEUP);
  code.call(BPF_FUNC_ringbuf_discard);
  code.go("end");
}

}  // namespace

std::vector<uint64_t> receive_program(const PacketLayout &layout, int ring, int notes,
                                      int32_t verdict) {
  Assembler code;
  code.move(kFrame, BPF_REG_1);
  code.call(BPF_FUNC_get_smp_processor_id);
  code.memory_of_map(BPF_REG_1, notes);
  code.store(BPF_W, BPF_REG_1, offset_of(offsetof(RingNotes, processor)), BPF_REG_0);
  code.load(BPF_W, kLength, kFrame, offset_of(offsetof(__sk_buff, len)));
  code.if_less(kLength, kMacs + 2, "end");
  reserve(code, ring);
  describe(code, layout);
  copy(code);
  submit(code, ring, notes);
  code.label("discard");
  code.move(BPF_REG_1, kRecord);
  code.set(BPF_REG_2, BPF_RB_NO_WAKEUP);
  code.call(BPF_FUNC_ringbuf_discard);
  code.label("missed");
  code.memory_of_map(BPF_REG_1, notes);
  code.set(BPF_REG_2, 1);
  code.add_atomically(BPF_REG_1, offset_of(offsetof(RingNotes, missed)), BPF_REG_2);
  code.label("end");
  code.set(BPF_REG_0, verdict);
  code.exit();
  return code.finish();
}

}  // namespace vchipd
