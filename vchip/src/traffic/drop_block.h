// SPDX-License-Identifier: MIT
// What became of the frames: a counter for each end that a frame can come to.
#ifndef VCHIP_TRAFFIC_DROP_BLOCK_H
#define VCHIP_TRAFFIC_DROP_BLOCK_H

#include <swctl-vchip/vchip.h>

#include <array>
#include <cstdint>

namespace vchip {

class Dump;
class Findings;

// received = forwarded + taken + the steps from attack to egress, on every
// port. The others are counted beside that sum.
enum class Fate : uint32_t {
  received,
  forwarded,
  taken,
  attack,
  ingress_rate,
  vlan,
  filter,
  trap,
  state,
  learn,
  rule,
  lookup,
  storm,
  egress,
  port,
  length,
  queue,
  loop,
  held,
};
inline constexpr uint32_t kFates = 19;
inline constexpr Fate kFirstSummand = Fate::forwarded;
inline constexpr Fate kLastSummand = Fate::egress;

const char *fate_name(Fate fate);

class DropBlock {
 public:
  using Counts = std::array<uint64_t, kFates>;

  static constexpr uint32_t kLayout = 1;
  void power_on() {}  // all zero
  // A frame that was being counted: its end counts, so the sum holds again.
  void repair();
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  const Counts &port(int32_t port) const { return ports_[static_cast<size_t>(port)]; }
  uint64_t count(int32_t port, Fate fate) const {
    return ports_[static_cast<size_t>(port)][static_cast<size_t>(fate)];
  }
  void add(int32_t port, Fate fate) {
    ++ports_[static_cast<size_t>(port)][static_cast<size_t>(fate)];
  }
  void clear(int32_t port) { ports_[static_cast<size_t>(port)] = {}; }

 private:
  std::array<Counts, VCHIP_PORTS> ports_;
};

}  // namespace vchip

#endif
