// SPDX-License-Identifier: MIT
// How ports handle VLAN tags, and the tables of tag protocol identifiers.
#ifndef VCHIP_TAG_TAG_BLOCK_H
#define VCHIP_TAG_TAG_BLOCK_H

#include <swctl-vchip/vchip.h>

#include <array>
#include <cstdint>

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kTpids = 4;
inline constexpr uint32_t kMaxTpid = 0xffff;
inline constexpr uint32_t kTpidMask = (uint32_t{1} << kTpids) - 1;
using Tpids = std::array<uint32_t, kTpids>;

struct TagKeep {
  uint32_t inner;
  uint32_t outer;
};

struct PortTags {
  uint32_t outer_pvid;
  uint32_t ingress_filter;
  uint32_t double_tag;
  TagKeep ingress_keep;
  TagKeep egress_keep;
  uint32_t outer_tag_status;
  uint32_t ingress_inner_tpids;  // a bit per entry
  uint32_t egress_inner_tpid;
  uint32_t egress_outer_tpid;
};

class TagBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on();
  void repair() {}  // single words, each valid on its own
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  const PortTags &port(int32_t port) const { return ports_[port]; }
  PortTags &port(int32_t port) { return ports_[port]; }
  const Tpids &inner() const { return inner_; }
  Tpids &inner() { return inner_; }
  const Tpids &outer() const { return outer_; }
  Tpids &outer() { return outer_; }

 private:
  PortTags ports_[VCHIP_PORTS];
  Tpids inner_;
  Tpids outer_;
};

}  // namespace vchip

#endif
