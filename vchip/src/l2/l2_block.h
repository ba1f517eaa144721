// SPDX-License-Identifier: MIT
// Unicast addresses of a unit: the table, what may be learned, and aging.
#ifndef VCHIP_L2_L2_BLOCK_H
#define VCHIP_L2_L2_BLOCK_H

#include "common/numbers.h"
#include "l2/address_table.h"

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kMaxAging = 1000000;  // seconds
inline constexpr uint32_t kUsualAging = 300;    // IEEE 802.1D
inline constexpr int32_t kMaxLearnLimit = 8191;

// What may be learned on a port. The limit holds only while it is enabled.
struct LearnLimit {
  uint32_t enabled;
  int32_t limit;
};

// The source of a frame, and where it came in.
struct Source {
  uint32_t vid;
  const uint8_t *mac;
  int32_t port;
  int32_t trunk;  // of the port; 0 for none
};

// What a source does to the table.
enum class Learn : uint32_t {
  nothing,
  add,
  move,
  refresh,
  violation,  // it is bound to another place
  full,       // its bucket has no room
  limit,      // its port may learn no more
};

class L2Block {
 public:
  static constexpr uint32_t kLayout = 2;
  void power_on();
  void repair() { table_.repair(); }
  bool sound() const { return table_.sound() && aging_ <= kMaxAging; }
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  const AddressTable &table() const { return table_; }

  // Calls that answer a result. add() keeps the chip's own words out of what
  // the caller gave: state and reserved words start at 0.
  int32_t add(const chip_l2_ucast_entry &entry);
  int32_t remove(uint32_t vid, const uint8_t *mac);
  void flush(const chip_l2_flush_request &request);

  uint32_t aging() const { return aging_; }
  void set_aging(uint32_t seconds) { aging_ = seconds; }
  const LearnLimit &limit(int32_t port) const { return limits_[port]; }
  void enable_limit(int32_t port, uint32_t enable) { limits_[port].enabled = enable; }
  void set_limit(int32_t port, int32_t limit) { limits_[port].limit = limit; }

  // A frame with this source has come in: what becomes of its entry, at the
  // index where it is, kNoIndex for none; and then doing so.
  Learn plan(int32_t index, const Source &source) const;
  void apply(Learn learn, int32_t index, const Source &source);
  int32_t mark(uint32_t vid, const uint8_t *mac, uint32_t state, uint32_t aux);
  void pass(uint64_t nanoseconds) { table_.pass(nanoseconds, aging_ * kNanosecondsPerSecond); }

 private:
  bool may_learn(int32_t port) const;

  AddressTable table_;
  uint32_t aging_;  // 0: never
  LearnLimit limits_[VCHIP_PORTS];
  uint32_t unused_;
};

}  // namespace vchip

#endif
