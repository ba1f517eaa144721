// SPDX-License-Identifier: MIT
// Rates and storm control.
#ifndef VCHIP_RATE_RATE_BLOCK_H
#define VCHIP_RATE_RATE_BLOCK_H

#include <swctl-vchip/vchip.h>

#include <array>
#include <cstdint>

#include "common/bucket.h"

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kStormTypes = 5;
// What storm control counts.
enum StormMode : uint32_t { kCountBytes, kCountPackets };
inline constexpr uint32_t kMaxStormBurst = 0xffff;
inline constexpr uint32_t kMaxStormRate = 0xffffff;
// In units of 16 kbit/s.
inline constexpr int32_t kMaxBandwidth = 0xfffff;

// The limit of one direction of a port.
struct Bandwidth {
  uint32_t limited;
  int32_t rate;
  Bucket bucket;
};
// Storm control of one type on one port.
struct Storm {
  uint32_t controlled;
  uint32_t selection;
  uint32_t rate;
  uint32_t exceeded;
  Bucket bucket;
};

class RateBlock {
 public:
  static constexpr uint32_t kLayout = 3;
  void power_on();
  void repair() {}  // single words, each valid on its own
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  uint32_t storm_mode() const { return storm_mode_; }
  // The buckets of another mode start full.
  void set_storm_mode(uint32_t mode, uint64_t now);
  const std::array<uint32_t, kStormTypes> &storm_burst() const { return storm_burst_; }
  void set_storm_burst(uint32_t type, uint32_t size, uint64_t now);

  const Bandwidth &ingress(int32_t port) const { return ports_[port].ingress; }
  Bandwidth &ingress(int32_t port) { return ports_[port].ingress; }
  const Bandwidth &egress(int32_t port) const { return ports_[port].egress; }
  Bandwidth &egress(int32_t port) { return ports_[port].egress; }
  // Another rate from `now` on.
  static void set_rate(Bandwidth &limit, int32_t rate, uint64_t now);
  static Fill fill_of(const Bandwidth &limit);
  Fill ingress_fill(int32_t port) const { return fill_of(ports_[port].ingress); }
  const Storm &storm(int32_t port, uint32_t type) const { return ports_[port].storm[type]; }
  Storm &storm(int32_t port, uint32_t type) { return ports_[port].storm[type]; }
  void set_storm_rate(int32_t port, uint32_t type, uint32_t rate, uint64_t now);
  Fill storm_fill(int32_t port, uint32_t type) const;
  // What a frame of this wire length takes.
  uint64_t storm_tokens(uint32_t wire) const;

 private:
  struct Port {
    Bandwidth ingress;
    Bandwidth egress;
    Storm storm[kStormTypes];
  };
  void fill_storms(uint64_t now);
  void dump_port(Dump &entry, int32_t port) const;
  void check_storm(Findings &findings, int32_t port, uint32_t type) const;

  uint32_t storm_mode_;
  std::array<uint32_t, kStormTypes> storm_burst_;
  Port ports_[VCHIP_PORTS];
};

}  // namespace vchip

#endif
