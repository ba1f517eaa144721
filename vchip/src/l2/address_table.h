// SPDX-License-Identifier: MIT
// The unicast entries of a unit: a hashed table with four places per bucket,
// as address tables in hardware are. It is full for an address when the four
// places of the address's bucket are taken, however empty the rest is.
#ifndef VCHIP_L2_ADDRESS_TABLE_H
#define VCHIP_L2_ADDRESS_TABLE_H

#include <swctl-vchip/vchip.h>
#include <swctl/platform/l2_records.h>

#include <cstdint>

namespace vchip {

class Findings;

inline constexpr int32_t kAddresses = 16384;
inline constexpr int32_t kPlaces = 4;  // of a bucket
inline constexpr int32_t kBuckets = kAddresses / kPlaces;
inline constexpr int32_t kNoIndex = -1;

// Flags of an entry.
inline constexpr uint32_t kFilterSourceFlag = 0x02;       // drop what comes from it
inline constexpr uint32_t kFilterDestinationFlag = 0x04;  // drop what goes to it
inline constexpr uint32_t kStaticFlag = 0x08;             // never ages, never moves
inline constexpr uint32_t kViolationIgnoredFlag = 0x20;
inline constexpr uint32_t kViolationFlag = 0x800000;
// Of its state word.
inline constexpr uint32_t kViolationState = 0x1;

constexpr bool is_static(const chip_l2_ucast_entry &entry) {
  return (entry.flags & kStaticFlag) != 0;
}

// Bucket of an address in a VLAN: the 48 bits of the address and the 12 of the
// VLAN, folded by exclusive or. Numbered addresses fill all buckets evenly.
int32_t bucket_of(uint32_t vid, const uint8_t *mac);

// An entry is found by VLAN and address. Its index is its place in the table,
// from 0 on, bucket by bucket; it does not change while the entry lives.
class AddressTable {
 public:
  void power_on();
  // Drops what was being written when a call was killed, and counts again.
  void repair();

  bool sound() const;
  void check(Findings &findings) const;

  // kNoIndex if there is none.
  int32_t find(uint32_t vid, const uint8_t *mac) const;
  // Brings what find() will look at nearer to the processor.
  void prefetch(uint32_t vid, const uint8_t *mac) const;
  // The first entry after the index; kNoIndex if there is none.
  int32_t next(int32_t index) const;

  const chip_l2_ucast_entry &entry(int32_t index) const { return slots_[index].entry; }
  // Whole seconds since its address was last seen.
  uint32_t age(int32_t index) const;
  // An entry that is there was seen again.
  void refresh(int32_t index) { slots_[index].seen = now_; }
  void set_state(int32_t index, uint32_t state, uint32_t aux);

  // Writes an entry over the one with its key or into a free place of its
  // bucket, as just seen. False: the bucket is full.
  bool put(const chip_l2_ucast_entry &entry);
  void remove(int32_t index);
  bool is_full(uint32_t vid, const uint8_t *mac) const {
    return free_place(bucket_of(vid, mac)) == kNoIndex;
  }

  // Time passes for the entries. Those that are not static and reach the aging
  // time are dropped, unless that is 0.
  void pass(uint64_t nanoseconds, uint64_t aging);

  // How many entries of the port are not static.
  uint32_t learned(int32_t port) const { return learned_[port]; }

 private:
  static constexpr uint32_t kWordBits = 64;

  struct Slot {
    chip_l2_ucast_entry entry;
    uint32_t unused;
    uint64_t seen;  // when, by now_
  };
  static_assert(sizeof(Slot) == 64);

  bool is_taken(int32_t index) const;
  void set_taken(int32_t index, bool taken);
  int32_t free_place(int32_t bucket) const;
  void count(const chip_l2_ucast_entry &entry, uint32_t step);
  void expire(uint64_t aging);
  void check_place(Findings &findings, int32_t index) const;

  // Bit i of word w says that slot 64 w + i holds an entry.
  uint64_t taken_[kAddresses / kWordBits];
  Slot slots_[kAddresses];
  uint32_t learned_[VCHIP_PORTS];
  uint32_t unused_;
  // Nanoseconds that have passed for the entries, and a time before which none
  // of those that can age was last seen: until that is old enough, no entry is.
  uint64_t now_;
  uint64_t oldest_;
};

}  // namespace vchip

#endif
