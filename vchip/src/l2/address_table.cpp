// SPDX-License-Identifier: MIT
#include "l2/address_table.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstring>

#include "common/numbers.h"

namespace vchip {
namespace {

constexpr uint32_t kHashBits = 12;
constexpr uint32_t kHashMask = (1u << kHashBits) - 1;
static_assert(kBuckets == 1 << kHashBits);

uint64_t number_of(const uint8_t *mac) {
  // Two halves that a compiler reads at once.
  const uint32_t high = static_cast<uint32_t>(mac[0]) << 8 | mac[1];
  const uint32_t low = static_cast<uint32_t>(mac[2]) << 24 | static_cast<uint32_t>(mac[3]) << 16 |
                       static_cast<uint32_t>(mac[4]) << 8 | mac[5];
  return static_cast<uint64_t>(high) << 32 | low;
}

// Of an entry, with the bytes of the address as they are in memory: that compares
// without turning them round.
class Key {
 public:
  Key(uint32_t vid, const uint8_t *mac) : vid_(vid), front_(front_of(mac)), back_(back_of(mac)) {}
  bool is_of(const chip_l2_ucast_entry &entry) const {
    const uint32_t other = (entry.vid ^ vid_) | (front_of(entry.mac) ^ front_);
    return (other | (uint32_t{back_of(entry.mac)} ^ back_)) == 0;
  }

 private:
  static uint32_t front_of(const uint8_t *mac) {
    uint32_t front = 0;
    memcpy(&front, mac, sizeof front);
    return front;
  }
  static uint16_t back_of(const uint8_t *mac) {
    uint16_t back = 0;
    memcpy(&back, mac + sizeof(uint32_t), sizeof back);
    return back;
  }

  uint32_t vid_;
  uint32_t front_;
  uint16_t back_;
};

inline int32_t bucket_of(uint32_t vid, uint64_t number) {
  const uint64_t hash =
      vid ^ number ^ number >> kHashBits ^ number >> 2 * kHashBits ^ number >> 3 * kHashBits;
  return static_cast<int32_t>(hash & kHashMask);
}

// No entry can age.
constexpr uint64_t kNobody = UINT64_MAX;

bool is_whole(const chip_l2_ucast_entry &entry) {
  return entry.vid < kVlanIds && static_cast<uint32_t>(entry.port) < VCHIP_PORTS &&
         static_cast<uint32_t>(entry.trunk) < kTrunkGroups;
}

}  // namespace

int32_t bucket_of(uint32_t vid, const uint8_t *mac) {
  return bucket_of(vid, number_of(mac));
}

void AddressTable::power_on() {
  oldest_ = kNobody;
}

void AddressTable::repair() {
  memset(learned_, 0, sizeof learned_);
  for (int32_t index = next(kNoIndex); index != kNoIndex; index = next(index))
    count(entry(index), 1);
}

bool AddressTable::sound() const {
  for (int32_t index = next(kNoIndex); index != kNoIndex; index = next(index))
    if (!is_whole(entry(index))) return false;
  return true;
}

bool AddressTable::is_taken(int32_t index) const {
  const auto bit = static_cast<uint32_t>(index);
  return (taken_[bit / kWordBits] >> bit % kWordBits & 1) != 0;
}

// A release, so that a killed call leaves no bit without its entry.
void AddressTable::set_taken(int32_t index, bool taken) {
  const auto bit = static_cast<uint32_t>(index);
  const uint64_t mask = uint64_t{1} << bit % kWordBits;
  uint64_t &word = taken_[bit / kWordBits];
  std::atomic_signal_fence(std::memory_order_seq_cst);
  word = taken ? word | mask : word & ~mask;
  std::atomic_signal_fence(std::memory_order_seq_cst);
}

int32_t AddressTable::find(uint32_t vid, const uint8_t *mac) const {
  const Key key(vid, mac);
  const int32_t first = bucket_of(vid, number_of(mac)) * kPlaces;
  const auto bit = static_cast<uint32_t>(first);
  // The places of a bucket are in one word. All are compared, for in which of them
  // the entry is cannot be foreseen.
  const Slot *slots = &slots_[first];
  uint32_t found = 0;
#pragma GCC unroll 4
  for (uint32_t place = 0; place < kPlaces; ++place)
    found |= uint32_t{key.is_of(slots[place].entry)} << place;
  found &= static_cast<uint32_t>(taken_[bit / kWordBits] >> bit % kWordBits);
  return found == 0 ? kNoIndex : first + std::countr_zero(found);
}

void AddressTable::prefetch(uint32_t vid, const uint8_t *mac) const {
  const Slot *first = &slots_[bucket_of(vid, number_of(mac)) * kPlaces];
  for (int32_t place = 0; place < kPlaces; ++place) __builtin_prefetch(first + place);
}

int32_t AddressTable::next(int32_t index) const {
  auto bit = static_cast<uint32_t>(index + 1);
  while (bit < kAddresses) {
    const uint64_t word = taken_[bit / kWordBits] >> bit % kWordBits;
    if (word != 0) return static_cast<int32_t>(bit) + std::countr_zero(word);
    bit = (bit / kWordBits + 1) * kWordBits;
  }
  return kNoIndex;
}

void AddressTable::set_state(int32_t index, uint32_t state, uint32_t aux) {
  slots_[index].entry.state = state;
  slots_[index].entry.aux = aux;
}

int32_t AddressTable::free_place(int32_t bucket) const {
  const int32_t first = bucket * kPlaces;
  for (int32_t index = first; index < first + kPlaces; ++index)
    if (!is_taken(index)) return index;
  return kNoIndex;
}

void AddressTable::count(const chip_l2_ucast_entry &entry, uint32_t step) {
  if (!is_static(entry)) learned_[entry.port] += step;
}

// The bit is off while the slot is written.
bool AddressTable::put(const chip_l2_ucast_entry &entry) {
  const int32_t present = find(entry.vid, entry.mac);
  if (present != kNoIndex) remove(present);
  const int32_t index = present != kNoIndex ? present : free_place(bucket_of(entry.vid, entry.mac));
  if (index == kNoIndex) return false;
  if (!is_static(entry)) oldest_ = std::min(oldest_, now_);
  slots_[index] = {entry, 0, now_};
  set_taken(index, true);
  count(entry, 1);
  return true;
}

uint32_t AddressTable::age(int32_t index) const {
  if (is_static(entry(index))) return 0;  // they do not age
  const uint64_t seconds = (now_ - slots_[index].seen) / kNanosecondsPerSecond;
  return static_cast<uint32_t>(std::min<uint64_t>(seconds, UINT32_MAX));
}

void AddressTable::pass(uint64_t nanoseconds, uint64_t aging) {
  now_ += std::min(nanoseconds, UINT64_MAX - now_);
  if (aging != 0 && oldest_ != kNobody && now_ - oldest_ >= aging) expire(aging);
}

void AddressTable::expire(uint64_t aging) {
  uint64_t oldest = kNobody;
  for (int32_t index = next(kNoIndex); index != kNoIndex; index = next(index)) {
    if (is_static(entry(index))) continue;
    const uint64_t seen = slots_[index].seen;
    if (now_ - seen >= aging)
      remove(index);
    else
      oldest = std::min(oldest, seen);
  }
  oldest_ = oldest;
}

void AddressTable::remove(int32_t index) {
  set_taken(index, false);
  count(entry(index), UINT32_MAX);
}

}  // namespace vchip
